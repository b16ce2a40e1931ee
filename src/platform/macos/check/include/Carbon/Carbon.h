// Carbon's hot keys, as far as they are called here.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;
typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef OSType EventParamName;
typedef OSType EventParamType;
typedef OSStatus (*EventHandlerUPP)(EventHandlerCallRef _Nullable, EventRef _Nonnull, void* _Nullable);
struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
enum : OSType {
    kEventClassKeyboard = 'keyb',
    kEventParamDirectObject = '----',
    typeEventHotKeyID = 'hkid'
};
enum : UInt32 { kEventHotKeyPressed = 5 };
enum : UInt32 { cmdKey = 1 << 8, shiftKey = 1 << 9, optionKey = 1 << 11, controlKey = 1 << 12 };
enum : OSStatus { eventNotHandledErr = -9874 };

extern "C" {
EventTargetRef _Nonnull GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef _Nonnull, EventHandlerUPP _Nonnull, ItemCount,
                             const EventTypeSpec* _Nonnull, void* _Nullable,
                             EventHandlerRef _Nullable* _Nullable);
OSStatus RemoveEventHandler(EventHandlerRef _Nonnull);
OSStatus GetEventParameter(EventRef _Nonnull, EventParamName, EventParamType,
                           EventParamType* _Nullable, ByteCount, ByteCount* _Nullable,
                           void* _Nullable);
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID,
                             EventTargetRef _Nonnull, OptionBits,
                             EventHotKeyRef _Nullable* _Nonnull);
OSStatus UnregisterEventHotKey(EventHotKeyRef _Nonnull);
}
