#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/localized_text.h"

namespace ostrel {

// What became of a request from outside.
struct ControlOutcome {
    enum class Kind {
        done,
        refused,  // not as things stand
        invalid,  // never: an argument makes no sense
    };

    [[nodiscard]] static ControlOutcome done(std::string text = {}) {
        return {Kind::done, {}, std::move(text)};
    }
    [[nodiscard]] static ControlOutcome refused(std::string key) {
        return {Kind::refused, {std::move(key), {}}, {}};
    }
    [[nodiscard]] static ControlOutcome invalid(LocalizedText reason) {
        return {Kind::invalid, std::move(reason), {}};
    }

    [[nodiscard]] bool isDone() const { return kind == Kind::done; }

    Kind kind = Kind::done;
    LocalizedText reason;  // why not
    std::string text;      // what was asked for, if anything was
};

}  // namespace ostrel
