#import "platform/macos/mac_announcements.h"

#import <Foundation/Foundation.h>

#include <vector>

#include "platform/macos/announced_values.h"
#include "platform/macos/foundation_values.h"
#include "platform/macos/observers.h"
#include "platform/macos/system_names.h"
#include "platform/macos/text.h"

namespace ostrel {

struct MacAnnouncements::Impl {
    std::vector<NotificationObserver> observers;
};

MacAnnouncements::MacAnnouncements() : impl_(std::make_unique<Impl>()) {
    for (const std::string_view name : kDoNotDisturbNames) {
        impl_->observers.emplace_back(
            [NSDistributedNotificationCenter defaultCenter], toNSString(name),
            [this](NSNotification* notification) {
                announced.send({toUtf8([notification name]),
                                announcedValues(toPlainDictionary([notification userInfo]))});
            });
    }
}

MacAnnouncements::~MacAnnouncements() = default;

}  // namespace ostrel
