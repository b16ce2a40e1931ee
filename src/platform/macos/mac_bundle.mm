#include "platform/macos/mac_bundle.h"

#import <Foundation/Foundation.h>

namespace ostrel {

bool isInBundle() {
    return [NSBundle mainBundle].bundleIdentifier != nil;
}

}  // namespace ostrel
