#pragma once

#include "../check_base.h"

typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef const void* CFTypeRef;

#ifdef __clang__
#define CK_BRIDGE(Class) __attribute__((objc_bridge(Class)))
#else
#define CK_BRIDGE(Class)
#endif
typedef const struct CK_BRIDGE(NSString) __CFString* CFStringRef;
typedef const struct CK_BRIDGE(NSArray) __CFArray* CFArrayRef;
typedef const struct CK_BRIDGE(NSDictionary) __CFDictionary* CFDictionaryRef;
typedef const struct CK_BRIDGE(NSNumber) __CFNumber* CFNumberRef;

typedef CK_ENUM(CFIndex, CFNumberType){
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberDoubleType = 13,
};

#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))

// All of them since macOS 10.0. "Copy" and "Create" in a name hand over a reference.
#pragma clang arc_cf_code_audited begin
extern "C" {
CFTypeRef CFRetain(CFTypeRef value);
void CFRelease(CFTypeRef value);
CFTypeID CFGetTypeID(CFTypeRef value);
CFTypeID CFStringGetTypeID(void);
CFTypeID CFNumberGetTypeID(void);
CFTypeID CFArrayGetTypeID(void);
CFTypeID CFDictionaryGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys,
                                  const void** values);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
}
#pragma clang arc_cf_code_audited end
