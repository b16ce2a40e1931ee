#pragma once

namespace ostrel {

// Whether the system starts the program when the user logs in.
class LoginItem {
  public:
    virtual ~LoginItem() = default;

    // As the system has it now: other programs may change it at any time.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    // False when it could not be changed; nothing is changed then.
    [[nodiscard]] virtual bool setEnabled(bool isEnabled) = 0;
};

}  // namespace ostrel
