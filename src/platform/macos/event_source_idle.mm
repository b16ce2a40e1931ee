#include "platform/macos/event_source_idle.h"

#import <ApplicationServices/ApplicationServices.h>

#include "platform/macos/idle_reading.h"

namespace ostrel {

std::optional<double> EventSourceIdle::secondsSinceLastInput() const {
    return idleSecondsOf(CGEventSourceSecondsSinceLastEventType(
        kCGEventSourceStateCombinedSessionState, kCGAnyInputEventType));
}

}  // namespace ostrel
