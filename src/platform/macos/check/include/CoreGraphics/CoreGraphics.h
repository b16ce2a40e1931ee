// Core Graphics, as far as it is called here.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef CK_ENUM(int32_t, CGEventSourceStateID){kCGEventSourceStateCombinedSessionState = 0,
                                               kCGEventSourceStateHIDSystemState = 1};
typedef CK_ENUM(uint32_t, CGEventType){kCGEventNull = 0};
#define kCGAnyInputEventType ((CGEventType)(~0))
typedef double CFTimeInterval;
typedef uint32_t CGWindowID;
typedef CK_OPTIONS(uint32_t, CGWindowListOption){kCGWindowListOptionAll = 0,
                                                 kCGWindowListOptionOnScreenOnly = 1 << 0,
                                                 kCGWindowListExcludeDesktopElements = 1 << 4};
#define kCGNullWindowID ((CGWindowID)0)

#pragma clang arc_cf_code_audited begin
extern "C" {
CFTimeInterval CGEventSourceSecondsSinceLastEventType(CGEventSourceStateID, CGEventType) CK_MACOS(10.4);
CFArrayRef _Nullable CGWindowListCopyWindowInfo(CGWindowListOption, CGWindowID) CK_MACOS(10.5);
}
#pragma clang arc_cf_code_audited end
CK_EXTERN const CFStringRef _Nonnull kCGWindowBounds CK_MACOS(10.5);
CK_EXTERN const CFStringRef _Nonnull kCGWindowOwnerPID CK_MACOS(10.5);
