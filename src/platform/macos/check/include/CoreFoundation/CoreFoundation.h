#pragma once

#include "../check_base.h"

// All of them since macOS 10.0. Each Foundation class here is the same object as its counterpart
// there. References are handed to ARC as they come, so nothing that counts them is declared.
typedef const void* CFTypeRef;

#define CK_BRIDGE(Class) __attribute__((objc_bridge(Class)))
typedef const struct CK_BRIDGE(NSString) __CFString* CFStringRef;
typedef const struct CK_BRIDGE(NSArray) __CFArray* CFArrayRef;
typedef const struct CK_BRIDGE(NSDictionary) __CFDictionary* CFDictionaryRef;

#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))
