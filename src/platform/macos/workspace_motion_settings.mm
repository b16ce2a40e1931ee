#include "platform/macos/workspace_motion_settings.h"

#import <AppKit/AppKit.h>

#include "platform/macos/observers.h"

namespace ostrel {

struct WorkspaceMotionSettings::Impl {
    NotificationObserver changes;
};

WorkspaceMotionSettings::WorkspaceMotionSettings()
    : impl_(
          new Impl{NotificationObserver([[NSWorkspace sharedWorkspace] notificationCenter],
                                        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification,
                                        [this](NSNotification*) { read(); })}) {
    read();
}

WorkspaceMotionSettings::~WorkspaceMotionSettings() = default;

void WorkspaceMotionSettings::read() {
    reduceMotion_ = [NSWorkspace sharedWorkspace].accessibilityDisplayShouldReduceMotion != NO;
}

}  // namespace ostrel
