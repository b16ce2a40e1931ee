#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/api/login_item.h"

namespace ostrel {

// The program's file in the folder of what starts at login, after the Desktop Application Autostart
// Specification. A file of the user's stands for one of the same name that holds for everybody.
class AutostartLoginItem : public LoginItem {
  public:
    static constexpr const char* kFileName = "ostrel.desktop";

    struct Places {
        std::filesystem::path userFolder;
        std::vector<std::filesystem::path> systemFolders;  // the first that has the file counts
        std::string program;                               // an absolute path
        std::vector<std::string> desktops;                 // the names that the session goes by

        // Of this user, session and process. Needs a QCoreApplication.
        [[nodiscard]] static Places ofThisSession();
    };

    explicit AutostartLoginItem(Places places);

    // Not when the file is hidden, is for other desktops, or names a program that is not there.
    [[nodiscard]] bool isEnabled() const override;

    [[nodiscard]] bool setEnabled(bool isEnabled) override;

  private:
    [[nodiscard]] std::filesystem::path userFile() const;
    [[nodiscard]] std::optional<std::string> systemEntry() const;
    [[nodiscard]] bool startsAtLogin(const std::string& entry) const;

    Places places_;
};

}  // namespace ostrel
