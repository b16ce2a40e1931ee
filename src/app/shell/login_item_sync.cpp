#include "app/shell/login_item_sync.h"

#include "core/settings/settings_store.h"
#include "platform/api/login_item.h"

namespace ostrel {

LoginItemSync::LoginItemSync(SettingsStore& settingsStore, LoginItem& loginItem)
    : settingsStore_(settingsStore), loginItem_(loginItem), isEnabled_(loginItem.isEnabled()) {
    settingsStore_.update([this](SettingsModel& settings) { settings.launchAtLogin = isEnabled_; });
    settingsChanges_ = settingsStore_.settings().onChange(
        [this](const SettingsModel& settings) { follow(settings.launchAtLogin); });
}

void LoginItemSync::follow(bool isWanted) {
    if (isWanted == isEnabled_) {
        return;
    }
    if (loginItem_.setEnabled(isWanted)) {
        isEnabled_ = isWanted;
        return;
    }
    settingsStore_.update([this](SettingsModel& settings) { settings.launchAtLogin = isEnabled_; });
    refused.send({"welcome.ready.login.failed", {}});
}

}  // namespace ostrel
