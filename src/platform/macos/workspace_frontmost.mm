#import "platform/macos/workspace_frontmost.h"

#import <AppKit/AppKit.h>

#include "platform/macos/text.h"

namespace ostrel {

std::optional<FrontmostApplication::Application> WorkspaceFrontmost::current() const {
    NSRunningApplication* const front = [[NSWorkspace sharedWorkspace] frontmostApplication];
    if (!front) {
        return std::nullopt;
    }
    NSString* const identifier = [front bundleIdentifier];
    return Application{identifier ? std::optional(toUtf8(identifier)) : std::nullopt,
                       [front processIdentifier]};
}

}  // namespace ostrel
