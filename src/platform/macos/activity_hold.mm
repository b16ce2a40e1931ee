#include "platform/macos/activity_hold.h"

#import <Foundation/Foundation.h>

namespace ostrel {

struct ActivityHold::Impl {
    id<NSObject> activity = [[NSProcessInfo processInfo]
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                          reason:@"Counting down to a break"];
};

ActivityHold::ActivityHold() : impl_(std::make_unique<Impl>()) {}

ActivityHold::~ActivityHold() {
    [[NSProcessInfo processInfo] endActivity:impl_->activity];
}

}  // namespace ostrel
