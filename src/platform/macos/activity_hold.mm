#include "platform/macos/activity_hold.h"

#import <Foundation/Foundation.h>

namespace ostrel {

struct ActivityHold::Activity {
    Activity() = default;
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;
    ~Activity() { [[NSProcessInfo processInfo] endActivity:token]; }

    id<NSObject> token = [[NSProcessInfo processInfo]
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                          reason:@"Counting down to a break"];
};

ActivityHold::ActivityHold() = default;
ActivityHold::~ActivityHold() = default;

void ActivityHold::follow(const ScheduleActivity& schedule) {
    if (!needsToStayAwake(schedule)) {
        activity_ = nullptr;
    } else if (!activity_) {
        activity_ = std::make_unique<Activity>();
    }
}

}  // namespace ostrel
