#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/subscription.h"

namespace ostrel {

enum class Superseded { finish, stop };

// The observers behind Signal and Published, called in the order in which they were added.
//
// In mid-round an observer that is added waits for the next round, one that is removed is called no
// more, and destroying the list ends the round after the running observer. A round that begins
// inside another runs whole; with Superseded::stop the outer one then ends.
template <class... Args>
class ObserverList {
  public:
    using Observer = std::function<void(Args...)>;

    ObserverList() : state_(std::make_shared<State>()) {}
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;
    ~ObserverList() {
        state_->alive = false;
        if (state_->depth == 0) {
            state_->slots.clear();
        }
    }

    [[nodiscard]] Subscription add(Observer observer) {
        auto slot = std::make_shared<Slot>(std::move(observer));
        state_->slots.push_back(slot);
        return Subscription([weak = std::weak_ptr<State>(state_), slot = std::move(slot)] {
            slot->live = false;
            if (const auto state = weak.lock()) {
                state->hasDead = true;
                state->sweep();
            }
        });
    }

    void callAll(Superseded superseded, Args... args) {
        const std::shared_ptr<State> state = state_;
        const std::uint64_t round = ++state->round;
        const std::size_t count = state->slots.size();
        ++state->depth;
        for (std::size_t i = 0; i < count && state->alive; ++i) {
            if (superseded == Superseded::stop && state->round != round) {
                break;
            }
            if (const Slot& slot = *state->slots[i]; slot.live) {
                slot.call(args...);
            }
        }
        --state->depth;
        state->sweep();
    }

  private:
    struct Slot {
        explicit Slot(Observer observer) : call(std::move(observer)) {}
        Observer call;
        bool live = true;
    };

    struct State {
        std::vector<std::shared_ptr<Slot>> slots;
        std::uint64_t round = 0;
        int depth = 0;
        bool alive = true;
        bool hasDead = false;

        // Slots stay in place while a round runs: the running observer may be the one that goes.
        void sweep() {
            if (depth > 0 || !hasDead) {
                return;
            }
            hasDead = false;
            std::vector<std::shared_ptr<Slot>> gone;
            const auto dead = std::stable_partition(slots.begin(), slots.end(),
                                                    [](const auto& slot) { return slot->live; });
            gone.assign(std::make_move_iterator(dead), std::make_move_iterator(slots.end()));
            slots.erase(dead, slots.end());
        }
    };

    std::shared_ptr<State> state_;
};

}  // namespace ostrel
