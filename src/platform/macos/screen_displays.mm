#include "platform/macos/screen_displays.h"

#import <AppKit/AppKit.h>

#include "platform/macos/foundation_values.h"
#include "platform/macos/observers.h"
#include "platform/macos/screen_layout.h"

namespace ostrel {
namespace {

ScreenDescription describe(NSScreen* screen) {
    const NSRect frame = screen.frame;
    return {toPlainValue([screen.deviceDescription objectForKey:@"NSScreenNumber"]),
            {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}};
}

}  // namespace

struct ScreenDisplays::Impl {
    NotificationObserver changes;
};

ScreenDisplays::ScreenDisplays()
    : impl_(new Impl{NotificationObserver([NSNotificationCenter defaultCenter],
                                          NSApplicationDidChangeScreenParametersNotification,
                                          [this](NSNotification*) { changed.send(); })}) {}

ScreenDisplays::~ScreenDisplays() = default;

std::vector<Displays::Display> ScreenDisplays::current() const {
    std::vector<ScreenDescription> screens;
    for (NSScreen* screen in [NSScreen screens]) {
        screens.push_back(describe(screen));
    }
    return displaysOf(screens);
}

std::optional<std::uint32_t> ScreenDisplays::mainDisplayID() const {
    NSScreen* screen = [NSScreen mainScreen];
    return screen ? displayNumberOf(describe(screen).number) : std::nullopt;
}

}  // namespace ostrel
