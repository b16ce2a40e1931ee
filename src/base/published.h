#pragma once

#include <functional>
#include <utility>

#include "base/observer_list.h"

namespace ostrel {

// A value that tells its observers of every change. Setting an equal value tells nobody.
//
// When an observer sets the value again, everybody hears the newest value once and nobody an older
// one after it. The reference an observer is handed always reads the current value.
template <class T>
class Published {
  public:
    using Observer = std::function<void(const T&)>;

    Published() = default;
    explicit Published(T initial) : value_(std::move(initial)) {}

    [[nodiscard]] const T& get() const { return value_; }
    const T& operator*() const { return value_; }
    const T* operator->() const { return &value_; }

    // Does not call the observer with the present value.
    [[nodiscard]] Subscription onChange(Observer observer) const {
        return observers_.add(std::move(observer));
    }

    void set(T next) {
        if (next == value_) {
            return;
        }
        value_ = std::move(next);
        observers_.callAll(Superseded::stop, value_);
    }

    // For values too large to be copied and compared: `change` alters the value in place and
    // answers whether it is another one now.
    template <class Change>
    void alter(Change change) {
        if (change(value_)) {
            observers_.callAll(Superseded::stop, value_);
        }
    }

  private:
    T value_{};
    mutable ObserverList<const T&> observers_;
};

}  // namespace ostrel
