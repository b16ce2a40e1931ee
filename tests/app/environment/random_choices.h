#pragma once

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>

namespace ostrel {

// What a random test does next, the same for a seed with every library, unlike the distributions
// of the standard one.
class RandomChoices {
  public:
    template <class Who>
    struct Choice {
        std::int64_t weight;
        void (Who::*act)();
    };

    explicit RandomChoices(std::uint64_t seed) : random_(seed) {}

    std::int64_t below(std::int64_t count) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(count));
    }
    std::int64_t between(std::int64_t least, std::int64_t most) {
        return least + below(most - least + 1);
    }
    bool oneIn(std::int64_t count) { return below(count) == 0; }
    template <class T>
    T oneOf(std::initializer_list<T> values) {
        return values.begin()[below(std::ssize(values))];
    }

    template <class Who, std::size_t kCount>
    void act(Who& who, const Choice<Who> (&choices)[kCount]) {
        std::int64_t total = 0;
        for (const Choice<Who>& choice : choices) {
            total += choice.weight;
        }
        std::int64_t drawn = below(total);
        for (const Choice<Who>& choice : choices) {
            drawn -= choice.weight;
            if (drawn < 0) {
                (who.*choice.act)();
                return;
            }
        }
    }

  private:
    std::mt19937_64 random_;
};

}  // namespace ostrel
