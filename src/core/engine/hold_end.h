#pragma once

#include <array>
#include <string_view>

namespace ostrel {

// How a hold on a due break came to its end.
enum class HoldEnd { opened, dropped, cancelled, folded };
constexpr std::array<std::string_view, 4> enumNames(HoldEnd) {
    return {"opened", "dropped", "cancelled", "folded"};
}

}  // namespace ostrel
