// Key-value observing, as far as it is called here.
#pragma once
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin
typedef NSString* NSKeyValueChangeKey;
@interface NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(nullable void*)context CK_MACOS(10.3);
@end
@interface NSObject (NSKeyValueObserverRegistration)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSUInteger)options
            context:(nullable void*)context CK_MACOS(10.3);
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath CK_MACOS(10.3);
@end
#pragma clang assume_nonnull end
