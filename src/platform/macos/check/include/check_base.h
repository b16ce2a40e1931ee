// Our own declarations of what platform/macos calls, written from the public documentation, so that
// it can be parsed where there is no SDK. Never on the include path of a build on a Mac.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

// Since which macOS.
#define CK_MACOS(version) __attribute__((availability(macos, introduced = version)))
#define CK_DEPRECATED(version, end, instead) \
    __attribute__((availability(macos, introduced = version, deprecated = end, message = instead)))

#define CK_ENUM(Type, Name) \
    enum Name : Type Name;  \
    enum Name : Type
// In C++ a set of options is its integer, so that `a | b` needs no cast.
#define CK_OPTIONS(Type, Name) \
    Type Name;                 \
    enum : Name
#define CK_EXTERN extern "C" __attribute__((visibility("default")))

#ifdef __OBJC__
#if defined(__OBJC_BOOL_IS_BOOL) && __OBJC_BOOL_IS_BOOL
typedef bool BOOL;  // Apple silicon
#else
typedef signed char BOOL;  // Intel
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr
#endif

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint16_t UInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef SInt32 OSStatus;
typedef UInt32 OSType;
typedef UInt32 FourCharCode;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
typedef unsigned long ByteCount;
enum { noErr = 0 };

typedef double CGFloat;
struct CGPoint {
    CGFloat x, y;
};
struct CGSize {
    CGFloat width, height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
