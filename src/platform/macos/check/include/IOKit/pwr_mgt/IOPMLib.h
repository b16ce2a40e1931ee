// The power manager's assertions, as far as they are called here.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef int IOReturn;
enum : IOReturn { kIOReturnSuccess = 0 };
#define kIOPMAssertionTypeKey CFSTR("AssertType")
CK_EXTERN IOReturn IOPMCopyAssertionsByProcess(CFDictionaryRef _Nullable* _Nonnull assertionsByPid
                                               __attribute__((cf_returns_retained))) CK_MACOS(10.7);
