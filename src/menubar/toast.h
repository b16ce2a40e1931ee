#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/localized_text.h"

namespace ostrel {

// A small card that comes up for some seconds.
struct Toast {
    enum class Kind { info, warning, error };
    enum class ActionRole { primary, secondary };

    struct Action {
        std::string id;  // "toast.action." + id names its button
        LocalizedText title;
        ActionRole role = ActionRole::secondary;
        std::function<void()> handler;

        bool operator==(const Action& other) const {
            return id == other.id && title == other.title && role == other.role;
        }
    };

    // Of a card that counts down.
    struct Progress {
        std::int64_t remainingSec = 0;
        std::int64_t totalSec = 0;

        bool operator==(const Progress&) const = default;
    };

    std::string id;  // fresh for each
    LocalizedText message;
    Kind kind = Kind::info;
    std::optional<LocalizedText> secondaryLine;
    std::optional<std::string> symbol;  // instead of the kind's
    std::vector<Action> actions;
    std::optional<Progress> progress;

    // Handlers play no part.
    bool operator==(const Toast&) const = default;
};

constexpr std::array<std::string_view, 3> enumNames(Toast::Kind) {
    return {"info", "warning", "error"};
}

[[nodiscard]] constexpr std::string_view symbolOf(Toast::Kind kind) {
    switch (kind) {
        case Toast::Kind::info:
            return "info.circle.fill";
        case Toast::Kind::warning:
            return "exclamationmark.triangle.fill";
        case Toast::Kind::error:
            break;
    }
    return "xmark.octagon.fill";
}

}  // namespace ostrel
