#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <memory>

namespace ostrel {

// Observes one notification of one centre for as long as it lives; with the distributed centre also
// while this program is in the background.
//
// `heard` runs on the main thread: inside the posting where that is on the main thread (so that
// what precedes a sleep is done before it), else soon after, and not once the observer is gone.
class NotificationObserver {
  public:
    using Heard = std::function<void(NSNotification* _Nonnull)>;

    NotificationObserver(NSNotificationCenter* _Nonnull centre, NSString* _Nonnull name,
                         Heard heard);
    NotificationObserver(NotificationObserver&& other) noexcept;
    NotificationObserver& operator=(NotificationObserver&& other) noexcept;
    ~NotificationObserver();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
