#pragma once

namespace ostrel {

// As ServiceManagement numbers them.
enum class LoginItemStatus { notRegistered, enabled, requiresApproval, notFound };

// What came of switching the login item.
struct LoginItemOutcome {
    bool isDone = false;
    bool needsApproval = false;  // the user has to allow it in the system's settings

    bool operator==(const LoginItemOutcome&) const = default;
};

// By the status after the attempt, whatever the attempt itself answered: switching off what was
// never on is reported as an error, and a switch that waits for the user as a success.
[[nodiscard]] constexpr LoginItemOutcome loginItemOutcome(LoginItemStatus after, bool isWanted) {
    const bool isEnabled = after == LoginItemStatus::enabled;
    return {isEnabled == isWanted, isWanted && after == LoginItemStatus::requiresApproval};
}

}  // namespace ostrel
