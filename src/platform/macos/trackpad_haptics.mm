#include "platform/macos/trackpad_haptics.h"

#import <AppKit/AppKit.h>

namespace ostrel {

void TrackpadHaptics::play(int pattern) {
    const bool isKnown =
        pattern > NSHapticFeedbackPatternGeneric && pattern <= NSHapticFeedbackPatternLevelChange;
    [[NSHapticFeedbackManager defaultPerformer]
        performFeedbackPattern:isKnown ? static_cast<NSHapticFeedbackPattern>(pattern)
                                       : NSHapticFeedbackPatternGeneric
               performanceTime:NSHapticFeedbackPerformanceTimeNow];
}

}  // namespace ostrel
