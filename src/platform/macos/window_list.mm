#include "platform/macos/window_list.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/macos/foundation_values.h"
#include "platform/macos/window_descriptions.h"

namespace ostrel {

std::optional<std::vector<ScreenWindows::Window>> WindowList::onScreen() const {
    NSArray* list = CFBridgingRelease(CGWindowListCopyWindowInfo(
        kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements, kCGNullWindowID));
    if (!list) {
        return std::nullopt;
    }
    std::vector<Window> windows;
    for (NSDictionary* each in list) {
        id bounds = [each objectForKey:(__bridge NSString*)kCGWindowBounds];
        id owner = [each objectForKey:(__bridge NSString*)kCGWindowOwnerPID];
        windows.push_back(windowOf({toPlainValue(owner), toPlainDictionary(bounds)}));
    }
    return windows;
}

}  // namespace ostrel
