#include "platform/macos/mac_bundle.h"

#import <AppKit/AppKit.h>

namespace ostrel {

bool isInBundle() {
    return [NSBundle mainBundle].bundleIdentifier != nil;
}

bool isRunningTwice() {
    NSString* own = [NSBundle mainBundle].bundleIdentifier;
    return own && [NSRunningApplication runningApplicationsWithBundleIdentifier:own].count > 1;
}

}  // namespace ostrel
