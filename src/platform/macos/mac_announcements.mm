#import "platform/macos/mac_announcements.h"

#import <Foundation/Foundation.h>

#include <vector>

#include "platform/macos/announced_number.h"
#include "platform/macos/observers.h"
#include "platform/macos/system_names.h"
#include "platform/macos/text.h"

namespace ostrel {
namespace {

using Value = DistributedAnnouncements::Value;

Value valueOf(id value) {
    if ([value isKindOfClass:[NSString class]]) {
        return toUtf8(value);
    }
    if (![value isKindOfClass:[NSNumber class]]) {
        return std::monostate{};
    }
    NSNumber* const number = value;
    // Truth values have a class of their own, which alone tells them from a char.
    if ([number isKindOfClass:[[NSNumber numberWithBool:YES] class]]) {
        return [number boolValue] != NO;
    }
    return announcedNumber([number objCType][0], [number longLongValue], [number doubleValue]);
}

DistributedAnnouncements::Announcement announcementOf(NSNotification* notification) {
    DistributedAnnouncements::Announcement announcement{toUtf8([notification name]), {}};
    NSDictionary* const userInfo = [notification userInfo];
    for (id key in userInfo) {
        if ([key isKindOfClass:[NSString class]]) {
            announcement.userInfo.emplace(toUtf8(key), valueOf([userInfo objectForKey:key]));
        }
    }
    return announcement;
}

}  // namespace

struct MacAnnouncements::Impl {
    std::vector<NotificationObserver> observers;
};

MacAnnouncements::MacAnnouncements() : impl_(std::make_unique<Impl>()) {
    for (const std::string_view name : kDoNotDisturbNames) {
        impl_->observers.emplace_back(
            [NSDistributedNotificationCenter defaultCenter], toNSString(name),
            [this](NSNotification* notification) { announced.send(announcementOf(notification)); });
    }
}

MacAnnouncements::~MacAnnouncements() = default;

}  // namespace ostrel
