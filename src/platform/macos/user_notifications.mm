#include "platform/macos/user_notifications.h"

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include <utility>

#include "platform/macos/foundation_values.h"
#include "platform/macos/mac_bundle.h"
#include "platform/macos/notification_mapping.h"
#include "platform/macos/observers.h"
#include "platform/macos/on_main.h"
#include "platform/macos/permission_gate.h"
#include "platform/macos/text.h"

using Respond = std::function<void(const ostrel::NotificationResponse&)>;

@interface OstrelNotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
- (instancetype)initWithRespond:(std::weak_ptr<Respond>)respond;
@end

@implementation OstrelNotificationDelegate {
    std::weak_ptr<Respond> _respond;
}

- (instancetype)initWithRespond:(std::weak_ptr<Respond>)respond {
    if ((self = [super init])) {
        _respond = std::move(respond);
    }
    return self;
}

// Also while this program is in front.
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler {
    completionHandler(UNNotificationPresentationOptionBanner |
                      UNNotificationPresentationOptionList | UNNotificationPresentationOptionSound);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
    UNNotificationContent* content = response.notification.request.content;
    const auto meant = ostrel::NotificationMapping::responseOf(
        {ostrel::toUtf8(response.actionIdentifier), ostrel::toUtf8(content.categoryIdentifier),
         ostrel::toPlainDictionary(content.userInfo)},
        {ostrel::toUtf8(UNNotificationDefaultActionIdentifier),
         ostrel::toUtf8(UNNotificationDismissActionIdentifier)});
    ostrel::onMain([weak = _respond, meant] {
        const auto respond = weak.lock();
        if (respond && meant) {
            (*respond)(*meant);
        }
    });
    completionHandler();
}

@end

namespace ostrel {
namespace {

UNNotificationTrigger* triggerOf(const NotificationTrigger& trigger) {
    if (const auto* after = std::get_if<AfterSeconds>(&trigger)) {
        return [UNTimeIntervalNotificationTrigger
            triggerWithTimeInterval:NotificationMapping::intervalOf(*after)
                            repeats:NO];
    }
    if (const auto* weekly = std::get_if<EveryWeek>(&trigger)) {
        NSDateComponents* time = [[NSDateComponents alloc] init];
        time.weekday = weekly->weekday;
        time.hour = weekly->hour;
        time.minute = 0;
        return [UNCalendarNotificationTrigger triggerWithDateMatchingComponents:time repeats:YES];
    }
    return nil;
}

NSDictionary* userInfoOf(const NotificationRequest& request) {
    NSMutableDictionary<NSString*, NSString*>* info = [[NSMutableDictionary alloc] init];
    for (const auto& [key, value] : request.userInfo) {
        [info setObject:toNSString(value) forKey:toNSString(key)];
    }
    return info;
}

}  // namespace

struct UserNotifications::Impl : std::enable_shared_from_this<Impl> {
    Impl(TranslateText translateText, NowFunction now, Respond tell)
        : translate(std::move(translateText)),
          gate({[this] { ask(); }, [this] { read(); },
                [this](const NotificationRequest& request) { post(request); }},
               std::move(now)),
          respond(std::make_shared<Respond>(std::move(tell))) {
        // The centre throws for a program without a bundle: nobody else may ask for it.
        if (isInBundle()) {
            center = [UNUserNotificationCenter currentNotificationCenter];
            delegate = [[OstrelNotificationDelegate alloc] initWithRespond:respond];
            center.delegate = delegate;
        } else {
            gate.settle(Authorization::denied);
        }
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() { center.delegate = nil; }

    // Answers on a thread of its own, and maybe after this object's end.
    void read() {
        const std::weak_ptr<Impl> weak = weak_from_this();
        [center getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
          const auto read = NotificationMapping::authorizationOf(settings.authorizationStatus);
          onMain([weak, read] {
              if (const auto impl = weak.lock()) {
                  impl->gate.settle(read);
              }
          });
        }];
    }

    void ask() {
        const std::weak_ptr<Impl> weak = weak_from_this();
        [center
            requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                          completionHandler:^(BOOL, NSError*) {
                            onMain([weak] {
                                if (const auto impl = weak.lock()) {
                                    impl->read();
                                }
                            });
                          }];
    }

    // In the language of the moment.
    void nameActions() {
        NSMutableArray<UNNotificationCategory*>* all = [[NSMutableArray alloc] init];
        for (const NotificationCategory& category : categories) {
            NSMutableArray<UNNotificationAction*>* actions = [[NSMutableArray alloc] init];
            for (const NotificationAction& action : category.actions) {
                NSString* title = toNSString(translate({action.titleKey, {}}));
                [actions addObject:[UNNotificationAction
                                       actionWithIdentifier:toNSString(action.id)
                                                      title:title
                                                    options:UNNotificationActionOptionNone]];
            }
            [all addObject:[UNNotificationCategory
                               categoryWithIdentifier:toNSString(category.id)
                                              actions:actions
                                    intentIdentifiers:@[]
                                              options:UNNotificationCategoryOptionNone]];
        }
        [center setNotificationCategories:[NSSet setWithArray:all]];
    }

    void post(const NotificationRequest& request) {
        nameActions();
        UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
        content.title = toNSString(translate(request.title));
        content.body = toNSString(translate(request.body));
        content.categoryIdentifier = toNSString(request.category);
        content.userInfo = userInfoOf(request);
        if (request.sound == NotificationSound::standard) {
            content.sound = [UNNotificationSound defaultSound];
        }
        [center addNotificationRequest:[UNNotificationRequest
                                           requestWithIdentifier:toNSString(request.id)
                                                         content:content
                                                         trigger:triggerOf(request.trigger)]
                 withCompletionHandler:nil];
    }

    TranslateText translate;
    PermissionGate gate;
    std::shared_ptr<Respond> respond;
    UNUserNotificationCenter* center = nil;
    OstrelNotificationDelegate* delegate = nil;
    std::vector<NotificationCategory> categories;
    std::unique_ptr<NotificationObserver> activation;
};

UserNotifications::UserNotifications(TranslateText translate, NowFunction now)
    : impl_(std::make_shared<Impl>(
          std::move(translate), std::move(now),
          [this](const NotificationResponse& response) { responded.send(response); })) {
    if (impl_->center) {
        impl_->activation = std::make_unique<NotificationObserver>(
            [NSNotificationCenter defaultCenter], NSApplicationDidBecomeActiveNotification,
            [impl = impl_.get()](NSNotification*) { impl->read(); });
        impl_->read();
    }
}

UserNotifications::~UserNotifications() = default;

void UserNotifications::registerCategories(std::vector<NotificationCategory> categories) {
    impl_->categories = std::move(categories);
    impl_->nameActions();
}

void UserNotifications::add(const NotificationRequest& request) {
    if (impl_->center) {
        impl_->gate.add(request);
    }
}

void UserNotifications::removePending(const std::string& id) {
    impl_->gate.remove(id);
    [impl_->center removePendingNotificationRequestsWithIdentifiers:@[ toNSString(id) ]];
}

void UserNotifications::removeDelivered(const std::string& id) {
    [impl_->center removeDeliveredNotificationsWithIdentifiers:@[ toNSString(id) ]];
}

SystemNotifications::Authorization UserNotifications::authorization() const {
    return impl_->gate.authorization();
}

}  // namespace ostrel
