// UserNotifications, as far as it is called here.
#pragma once
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin
typedef CK_OPTIONS(NSUInteger, UNAuthorizationOptions){UNAuthorizationOptionSound = 1 << 1,
                                                       UNAuthorizationOptionAlert = 1 << 2};
typedef CK_OPTIONS(NSUInteger, UNNotificationPresentationOptions){
    UNNotificationPresentationOptionNone = 0, UNNotificationPresentationOptionSound = 1 << 1,
    UNNotificationPresentationOptionList CK_MACOS(11.0) = 1 << 3,
    UNNotificationPresentationOptionBanner CK_MACOS(11.0) = 1 << 4};
typedef CK_OPTIONS(NSUInteger, UNNotificationActionOptions){UNNotificationActionOptionNone = 0};
typedef CK_OPTIONS(NSUInteger, UNNotificationCategoryOptions){UNNotificationCategoryOptionNone = 0};
typedef CK_ENUM(NSInteger, UNAuthorizationStatus){
    UNAuthorizationStatusNotDetermined, UNAuthorizationStatusDenied, UNAuthorizationStatusAuthorized,
    UNAuthorizationStatusProvisional};

CK_MACOS(10.14)
@interface UNNotificationSound : NSObject
@property(class, readonly, copy) UNNotificationSound* defaultSound;
@end

CK_MACOS(10.14)
@interface UNNotificationContent : NSObject
@property(readonly, copy) NSString* categoryIdentifier;
@property(readonly, copy) NSDictionary* userInfo;
@end
CK_MACOS(10.14)
@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString* title;
@property(copy) NSString* body;
@property(copy) NSString* categoryIdentifier;
@property(nullable, copy) UNNotificationSound* sound;
@property(copy) NSDictionary* userInfo;
@end

CK_MACOS(10.14)
@interface UNNotificationTrigger : NSObject
@end
CK_MACOS(10.14)
@interface UNTimeIntervalNotificationTrigger : UNNotificationTrigger
+ (instancetype)triggerWithTimeInterval:(NSTimeInterval)timeInterval repeats:(BOOL)repeats;
@end
CK_MACOS(10.14)
@interface UNCalendarNotificationTrigger : UNNotificationTrigger
+ (instancetype)triggerWithDateMatchingComponents:(NSDateComponents*)dateComponents
                                          repeats:(BOOL)repeats;
@end

CK_MACOS(10.14)
@interface UNNotificationRequest : NSObject
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(nullable UNNotificationTrigger*)trigger;
@property(readonly, copy) UNNotificationContent* content;
@end
CK_MACOS(10.14)
@interface UNNotification : NSObject
@property(readonly, copy) UNNotificationRequest* request;
@end
CK_MACOS(10.14)
@interface UNNotificationResponse : NSObject
@property(readonly, copy) UNNotification* notification;
@property(readonly, copy) NSString* actionIdentifier;
@end

CK_MACOS(10.14)
@interface UNNotificationAction : NSObject
+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options;
@end
CK_MACOS(10.14)
@interface UNNotificationCategory : NSObject
+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray<UNNotificationAction*>*)actions
                     intentIdentifiers:(NSArray<NSString*>*)intentIdentifiers
                               options:(UNNotificationCategoryOptions)options;
@end

CK_MACOS(10.14)
@interface UNNotificationSettings : NSObject
@property(readonly) UNAuthorizationStatus authorizationStatus;
@end

@class UNUserNotificationCenter;
CK_MACOS(10.14)
@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler;
@end
CK_MACOS(10.14)
@interface UNUserNotificationCenter : NSObject
+ (UNUserNotificationCenter*)currentNotificationCenter;
@property(nullable, weak) id<UNUserNotificationCenterDelegate> delegate;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* _Nullable error))handler;
- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings* settings))handler;
- (void)setNotificationCategories:(NSSet<UNNotificationCategory*>*)categories;
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(nullable void (^)(NSError* _Nullable error))handler;
- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray<NSString*>*)identifiers;
- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray<NSString*>*)identifiers;
@end
CK_EXTERN NSString* const UNNotificationDefaultActionIdentifier CK_MACOS(10.14);
CK_EXTERN NSString* const UNNotificationDismissActionIdentifier CK_MACOS(10.14);
#pragma clang assume_nonnull end
