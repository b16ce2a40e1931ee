#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/api/preferences_store.h"

namespace ostrel {

// The user's preferences in NSUserDefaults, in the program's own domain: the bytes of a record are
// a data value under its key. A value of any other type, which only a person can have put there, is
// no record; the next write sets it aside.
//
// The system takes a value at once, gives it to whoever asks and writes it to the disk in its own
// time; it never says that it could not. So persistenceWriteFailed is never sent.
class UserDefaultsPreferences : public PreferencesStore {
  public:
    [[nodiscard]] std::optional<std::string> read(std::string_view key) const override;
    void write(std::string_view key, std::string_view bytes) override;
    void remove(std::string_view key) override;

    // Without those that were set aside.
    [[nodiscard]] std::vector<std::string> keys() const override;

    // Renames the value to "KEY.damaged", "KEY.damaged-b" and so on.
    void setAside(std::string_view key) override;
};

}  // namespace ostrel
