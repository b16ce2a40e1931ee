#import "platform/macos/observers.h"

#include <utility>

#include "platform/macos/on_main.h"

using Heard = ostrel::NotificationObserver::Heard;

@interface OstrelListener : NSObject {
    std::weak_ptr<Heard> _heard;
}
- (instancetype)initWithHeard:(std::weak_ptr<Heard>)heard;
- (void)hear:(NSNotification*)notification;
@end

@implementation OstrelListener

- (instancetype)initWithHeard:(std::weak_ptr<Heard>)heard {
    if ((self = [super init])) {
        _heard = std::move(heard);
    }
    return self;
}

- (void)hear:(NSNotification*)notification {
    auto call = [weak = _heard, notification] {
        // Kept meanwhile: what is called may end the observer.
        if (const auto heard = weak.lock()) {
            (*heard)(notification);
        }
    };
    if ([NSThread isMainThread]) {
        call();
    } else {
        ostrel::onMain(std::move(call));
    }
}

@end

namespace ostrel {

struct NotificationObserver::Impl {
    Impl(NSNotificationCenter* of, Heard call)
        : heard(std::make_shared<Heard>(std::move(call))),
          centre(of),
          listener([[OstrelListener alloc] initWithHeard:heard]) {}
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() { [centre removeObserver:listener]; }

    std::shared_ptr<Heard> heard;
    NSNotificationCenter* centre;
    OstrelListener* listener;
};

NotificationObserver::NotificationObserver(NSNotificationCenter* centre, NSString* name,
                                           Heard heard)
    : impl_(std::make_unique<Impl>(centre, std::move(heard))) {
    if ([centre isKindOfClass:[NSDistributedNotificationCenter class]]) {
        auto* const distributed = static_cast<NSDistributedNotificationCenter*>(centre);
        [distributed addObserver:impl_->listener
                        selector:@selector(hear:)
                            name:name
                          object:nil
              suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
    } else {
        [centre addObserver:impl_->listener selector:@selector(hear:) name:name object:nil];
    }
}

NotificationObserver::NotificationObserver(NotificationObserver&&) noexcept = default;
NotificationObserver& NotificationObserver::operator=(NotificationObserver&&) noexcept = default;
NotificationObserver::~NotificationObserver() = default;

}  // namespace ostrel
