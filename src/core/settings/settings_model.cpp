#include "core/settings/settings_model.h"

#include <utility>

namespace ostrel {

std::optional<SettingsModel> SettingsModel::decode(const Json& json) {
    if (!json.is_object()) {
        return std::nullopt;
    }
    SettingsModel settings;
    forEachField<SettingsModel>([&]<class Value>(const Field<SettingsModel, Value>& field) {
        const auto found = json.find(field.key);
        if (found == json.end()) {
            return;
        }
        if (auto value = JsonCodec<Value>::decode(*found)) {
            settings.*field.member = *std::move(value);
        }
    });
    return settings;
}

}  // namespace ostrel
