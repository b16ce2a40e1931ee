#pragma once

#include "../CoreFoundation/CoreFoundation.h"

// Without a version of its own a declaration is as old as its class, a class as macOS 10.0.

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef CGRect NSRect;
typedef CGSize NSSize;
typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@class NSString, NSDate, NSNotification, NSThread, NSTimer, NSURL;
@class NSArray<T>, NSDictionary<K, V>;

// The layout that the compiler's for-in loop works with.
struct NSFastEnumerationState {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
};

#pragma clang assume_nonnull begin

typedef NSString* NSNotificationName;
typedef NSString* NSRunLoopMode;

@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
- (Class)class;
@end

@protocol NSCopying
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (instancetype)new;
- (instancetype)init __attribute__((objc_designated_initializer));
+ (Class)class;
- (void)performSelectorOnMainThread:(SEL)selector
                         withObject:(nullable id)argument
                      waitUntilDone:(BOOL)wait CK_MACOS(10.2);
@end

@interface NSString : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(nullable, readonly) const char* UTF8String __attribute__((objc_returns_inner_pointer));
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)other;
@end

@interface NSData : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes __attribute__((objc_returns_inner_pointer));
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end

@interface NSValue : NSObject <NSCopying>
@property(readonly) const char* objCType __attribute__((objc_returns_inner_pointer));
@end
@interface NSNumber : NSValue
@property(readonly) BOOL boolValue;
@property(readonly) long long longLongValue;
@property(readonly) double doubleValue;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithUnsignedInt:(unsigned int)value;
+ (NSNumber*)numberWithLong:(long)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
@end

@interface NSArray<__covariant T> : NSObject <NSCopying>
@property(readonly) NSUInteger count;
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(const T _Nonnull[_Nonnull])objects count:(NSUInteger)count;
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable* _Nonnull)buffer
                                    count:(NSUInteger)count CK_MACOS(10.5);
@end

@interface NSMutableArray<T> : NSArray <T>
- (void)addObject:(T)object;
@end

@interface NSDictionary<__covariant K, __covariant V> : NSObject <NSCopying>
@property(readonly) NSUInteger count;
- (nullable V)objectForKey:(K)key;
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const V _Nonnull[_Nullable])objects
                              forKeys:(const K<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable* _Nonnull)buffer
                                    count:(NSUInteger)count CK_MACOS(10.5);
@end

@interface NSMutableDictionary<K, V> : NSDictionary <K, V>
- (void)setObject:(V)object forKey:(K<NSCopying>)key;
@end

@interface NSSet<__covariant T> : NSObject
+ (instancetype)setWithArray:(NSArray<T>*)array;
@end

@interface NSError : NSObject
@property(readonly, copy) NSString* domain;
@end

@interface NSURL : NSObject <NSCopying>
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
- (nullable NSURL*)URLForResource:(nullable NSString*)name
                    withExtension:(nullable NSString*)extension CK_MACOS(10.6);
@end

typedef CK_OPTIONS(uint64_t, NSActivityOptions){
    NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00EFFFFFull,
};
@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSString* processName;
@property(readonly) int processIdentifier;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options
                                  reason:(NSString*)reason CK_MACOS(10.9);
- (void)endActivity:(id<NSObject>)activity CK_MACOS(10.9);
@end

@interface NSThread : NSObject
@property(class, readonly) BOOL isMainThread CK_MACOS(10.5);
@end

@interface NSNotification : NSObject <NSCopying>
@property(readonly, copy) NSNotificationName name;
@property(nullable, readonly) id object;
@property(nullable, readonly, copy) NSDictionary* userInfo;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)removeObserver:(id)observer;
@end

typedef CK_ENUM(NSUInteger, NSNotificationSuspensionBehavior){
    NSNotificationSuspensionBehaviorDeliverImmediately = 4,
};
@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter*)defaultCenter;
- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(nullable NSNotificationName)name
                object:(nullable NSString*)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)behavior;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
- (nullable NSDictionary<NSString*, id>*)persistentDomainForName:(NSString*)name;
@end

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* mainRunLoop CK_MACOS(10.5);
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
@end

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)seconds
                           target:(id)target
                         selector:(SEL)selector
                         userInfo:(nullable id)userInfo
                          repeats:(BOOL)repeats;
- (void)invalidate;
@end

@interface NSDate : NSObject <NSCopying>
@end

@interface NSTimeZone : NSObject <NSCopying>
@property(class, readonly, copy) NSTimeZone* systemTimeZone;
@property(readonly, copy) NSString* name;
+ (void)resetSystemTimeZone;
@end

@interface NSDateComponents : NSObject <NSCopying>
@property NSInteger weekday CK_MACOS(10.4);
@property NSInteger hour CK_MACOS(10.4);
@property NSInteger minute CK_MACOS(10.4);
@property NSInteger second CK_MACOS(10.4);
@end

CK_EXTERN NSNotificationName const NSCalendarDayChangedNotification CK_MACOS(10.9);
CK_EXTERN NSNotificationName const NSSystemClockDidChangeNotification CK_MACOS(10.6);
CK_EXTERN NSNotificationName const NSSystemTimeZoneDidChangeNotification CK_MACOS(10.5);
CK_EXTERN NSRunLoopMode const NSRunLoopCommonModes CK_MACOS(10.5);
static inline id _Nullable CFBridgingRelease(CFTypeRef __attribute__((cf_consumed)) _Nullable value) {
    return (__bridge_transfer id)value;
}

#pragma clang assume_nonnull end
