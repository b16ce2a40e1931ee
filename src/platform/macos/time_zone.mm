#import <Foundation/Foundation.h>

#include "platform/macos/text.h"
#include "platform/macos/time_zone.h"

namespace ostrel {

std::string macTimeZone() {
    return toUtf8([[NSTimeZone systemTimeZone] name]);
}

void forgetMacTimeZone() {
    [NSTimeZone resetSystemTimeZone];
}

}  // namespace ostrel
