#pragma once

#include <functional>
#include <utility>

namespace ostrel {

// Holds something that has to be taken back: an observer, a timer. Destroying or assigning over it
// takes it back; one that outlives its source does nothing then.
class [[nodiscard]] Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~Subscription() { cancel(); }

    // Takes it back now. A second call does nothing.
    void cancel() {
        if (auto take = std::exchange(cancel_, nullptr)) {
            take();
        }
    }

    // Whether there is something to take back. A one-shot timer that has fired still counts.
    explicit operator bool() const { return static_cast<bool>(cancel_); }

  private:
    std::function<void()> cancel_;
};

}  // namespace ostrel
