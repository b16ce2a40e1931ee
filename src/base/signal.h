#pragma once

#include <functional>
#include <utility>

#include "base/observer_list.h"

namespace ostrel {

// An event with arguments. Every observer that was there when a round began and has not been
// removed since is called once, in the order of subscription, before send() returns; a send()
// from inside an observer runs whole at once. Destroying the signal in mid-round is allowed.
template <class... Args>
class Signal {
  public:
    using Observer = std::function<void(Args...)>;

    // Observing does not change the owner, so that owners can hand out a const reference.
    [[nodiscard]] Subscription subscribe(Observer observer) const {
        return observers_.add(std::move(observer));
    }

    void send(Args... args) { observers_.callAll(Superseded::finish, args...); }

  private:
    mutable ObserverList<Args...> observers_;
};

}  // namespace ostrel
