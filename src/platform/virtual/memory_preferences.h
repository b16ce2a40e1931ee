#pragma once

#include <map>
#include <string>

#include "platform/api/preferences_store.h"

namespace ostrel {

// Preferences in memory that tell of each change and can be made to fail.
class MemoryPreferences : public PreferencesStore {
  public:
    [[nodiscard]] std::optional<std::string> read(std::string_view key) const override;
    void write(std::string_view key, std::string_view bytes) override;
    void remove(std::string_view key) override;
    [[nodiscard]] std::vector<std::string> keys() const override;
    void setAside(std::string_view key) override;
    [[nodiscard]] std::optional<std::string> encodingFault() const override;

    enum class Encoding { works, fails };
    void setEncoding(Encoding encoding) { encoding_ = encoding; }

    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& contents() const {
        return contents_;
    }
    // What was set aside, by key, latest last.
    [[nodiscard]] const std::multimap<std::string, std::string>& damaged() const {
        return damaged_;
    }

    Signal<const std::string&> written;  // the bytes under the key changed
    Signal<const std::string&> removed;

  private:
    std::map<std::string, std::string, std::less<>> contents_;
    std::multimap<std::string, std::string> damaged_;
    Encoding encoding_ = Encoding::works;
};

}  // namespace ostrel
