#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "base/published.h"
#include "base/signal.h"

namespace ostrel {

using Heard = std::vector<int>;

TEST(SignalTest, ObserverAddedInMidRoundWaitsForTheNext) {
    Signal<int> signal;
    Heard heard;
    std::vector<Subscription> added;
    const auto adder = signal.subscribe([&](int) {
        added.push_back(signal.subscribe([&](int value) { heard.push_back(value); }));
    });
    signal.send(1);
    EXPECT_EQ(heard, Heard{});
    signal.send(2);
    EXPECT_EQ(heard, (Heard{2}));
}

TEST(SignalTest, ObserverRemovedInMidRoundIsCalledNoMore) {
    Signal<int> signal;
    Heard heard;
    Subscription later;
    Subscription self;
    const auto remover = signal.subscribe([&](int) { later.cancel(); });
    // The closure goes with its subscription, in the middle of its own call.
    self = signal.subscribe([&, alive = std::make_shared<int>(7)](int) {
        self.cancel();
        heard.push_back(*alive);
    });
    later = signal.subscribe([&](int) { heard.push_back(99); });
    signal.send(1);
    signal.send(2);
    EXPECT_EQ(heard, (Heard{7}));
}

TEST(SignalTest, SignalDestroyedInMidRoundEndsIt) {
    auto signal = std::make_unique<Signal<int>>();
    Heard heard;
    const auto destroyer = signal->subscribe([&](int value) {
        signal.reset();
        heard.push_back(value);
    });
    const auto after = signal->subscribe([&](int) { heard.push_back(99); });
    signal->send(1);
    EXPECT_EQ(heard, (Heard{1}));
}

TEST(PublishedTest, EverybodyHearsTheNewestValueOnceWhenAnObserverSetsIt) {
    Published<int> value(0);
    Heard first;
    Heard second;
    const auto corrector = value.onChange([&](int now) {
        first.push_back(now);
        if (now > 10) {
            value.set(10);
        }
    });
    const auto watch = value.onChange([&](int now) { second.push_back(now); });
    value.set(25);
    EXPECT_EQ(first, (Heard{25, 10}));
    EXPECT_EQ(second, (Heard{10}));
}

}  // namespace ostrel
