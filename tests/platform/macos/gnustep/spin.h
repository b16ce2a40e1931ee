#pragma once

#import <Foundation/Foundation.h>

#include <functional>

namespace ostrel {

// Turns the main run loop until `condition` holds; false when it does not within ten seconds.
inline bool spinUntil(const std::function<bool()>& condition, NSString* mode = NSDefaultRunLoopMode,
                      double limitSec = 10) {
    NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:limitSec];
    while (!condition() && [end timeIntervalSinceNow] > 0) {
        [[NSRunLoop currentRunLoop] runMode:mode
                                 beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.005]];
    }
    return condition();
}

// Lets everything come that is on its way.
inline void spinFor(double sec) {
    static_cast<void>(spinUntil([] { return false; }, NSDefaultRunLoopMode, sec));
}

}  // namespace ostrel
