#include "app/control/setting_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <utility>

#include "core/settings/preset_catalog.h"
#include "presence/hotkey_router.h"

namespace ostrel::SettingValues {
namespace {

using Range = SettingsRanges::Range;

struct Limits {
    std::string_view name;
    Range range;
};
constexpr auto kTiming = std::to_array<Limits>({
    {"eyeBreakIntervalSec", TimingRanges::kEyeIntervalSec},
    {"eyeBreakDurationSec", TimingRanges::kEyeDurationSec},
    {"bodyBreakIntervalSec", TimingRanges::kBodyIntervalSec},
    {"bodyBreakDurationSec", TimingRanges::kBodyDurationSec},
});
constexpr auto kOthers = std::to_array<Limits>({
    {"workHoursStartMinute", SettingsRanges::kMinuteOfDay},
    {"workHoursEndMinute", SettingsRanges::kMinuteOfDay},
    {"dailyGoalBreaks", SettingsRanges::kDailyGoalBreaks},
});
constexpr Range kDimPercent = SettingsRanges::kOverlayDimPercent;
constexpr double kPercent = 100;
constexpr double kLeastDim = static_cast<double>(kDimPercent.least) / kPercent;
constexpr double kMostDim = static_cast<double>(kDimPercent.most) / kPercent;

std::optional<Range> rangeIn(const auto& table, std::string_view name) {
    const auto found = std::ranges::find(table, name, &Limits::name);
    return found == table.end() ? std::nullopt : std::optional(found->range);
}

bool isTiming(std::string_view name) {
    return rangeIn(kTiming, name).has_value();
}

std::optional<Range> rangeOf(std::string_view name) {
    const auto timing = rangeIn(kTiming, name);
    return timing ? timing : rangeIn(kOthers, name);
}

bool contains(Range range, std::int64_t number) {
    return number >= range.least && number <= range.most;
}

std::vector<std::string> texts(const auto& values) {
    std::vector<std::string> all;
    for (const auto& value : values) {
        if constexpr (std::is_convertible_v<decltype(value), std::string_view>) {
            all.emplace_back(value);
        } else {
            all.push_back(std::to_string(value));
        }
    }
    return all;
}

std::vector<std::string> presets() {
    std::vector<std::string> ids;
    for (const PresetDefinition& preset : PresetCatalog::all()) {
        ids.push_back(preset.id);
    }
    ids.emplace_back(PresetCatalog::kOwnID);
    return ids;
}

template <class Value>
std::vector<std::string> choicesOf(std::string_view name, const Languages& languages) {
    if constexpr (std::is_same_v<Value, bool>) {
        return {"true", "false"};
    } else if constexpr (NamedEnum<Value>) {
        return texts(enumNames(Value{}));
    } else if (name == "activePresetID") {
        return presets();
    } else if (name == "languageRaw") {
        Languages all{"system"};
        all.insert(all.end(), languages.begin(), languages.end());
        return all;
    } else if (name == "idleThresholdSec") {
        return texts(IdleDefaults::kThresholdChoicesSec);
    } else if (name == "maxDeferralSec") {
        return texts(PresenceDefaults::kDeferralChoicesSec);
    } else if (name == "breakSoonLeadSec") {
        return texts(PreBreakDefaults::kBreakSoonChoicesSec);
    } else if (name == "preBreakToastLeadSec") {
        return texts(PreBreakDefaults::kToastChoicesSec);
    }
    return {};
}

// A document cannot hold text that is not UTF-8.
template <class Value>
std::optional<Value> read(const std::string& text) {
    const std::optional<Json> json = parseJson(text);
    if constexpr (std::is_same_v<Value, std::string> || NamedEnum<Value>) {
        const bool isQuoted = json && json->is_string();
        const std::string plain = isQuoted ? json->template get<std::string>() : text;
        return printJson(plain).text ? JsonCodec<Value>::decode(Json(plain)) : std::nullopt;
    } else {
        return json ? JsonCodec<Value>::decode(*json) : std::nullopt;
    }
}

template <class Value>
bool isAllowed(std::string_view name, const Value& value, const Languages& languages) {
    const std::vector<std::string> listed = choicesOf<Value>(name, languages);
    const auto isListed = [&listed](const std::string& text) {
        return listed.empty() || std::ranges::find(listed, text) != listed.end();
    };
    if constexpr (std::is_same_v<Value, std::int64_t>) {
        const auto range = rangeOf(name);
        return isListed(std::to_string(value)) && (!range || contains(*range, value));
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return isListed(value);
    } else if constexpr (std::is_same_v<Value, double>) {
        return value >= kLeastDim && value <= kMostDim;
    } else if constexpr (std::is_same_v<Value, std::set<std::int64_t>>) {
        return std::ranges::all_of(
            value, [](std::int64_t day) { return contains(SettingsRanges::kWeekday, day); });
    } else {
        return true;
    }
}

std::string joined(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += (line.empty() ? "" : ", ") + word;
    }
    return line;
}

// What the setting takes.
template <class Value>
LocalizedText requirement(const std::string& name, const Languages& languages) {
    if (const auto range = rangeOf(name)) {
        return {"cli.setting.range %@ %@ %@",
                {name, std::to_string(range->least), std::to_string(range->most)}};
    }
    if constexpr (std::is_same_v<Value, bool>) {
        return {"cli.setting.boolean %@", {name}};
    }
    if (const auto listed = choicesOf<Value>(name, languages); !listed.empty()) {
        return {"cli.setting.choices %@ %@", {name, joined(listed)}};
    }
    if constexpr (std::is_same_v<Value, double>) {
        return {"cli.setting.number %@ %@ %@",
                {name, asJson(kLeastDim).dump(), asJson(kMostDim).dump()}};
    } else if constexpr (std::is_same_v<Value, std::set<std::int64_t>>) {
        return {"cli.setting.days %@", {name}};
    } else if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
        return {"cli.setting.texts %@", {name}};
    } else if constexpr (std::is_same_v<Value, HotkeyChord>) {
        return {"cli.setting.shortcut %@", {name}};
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return {"cli.setting.text %@", {name}};
    } else {
        return {"cli.setting.integer %@", {name}};
    }
}

void adoptPreset(SettingsModel& settings, const std::string& id) {
    if (const auto preset = PresetCatalog::find(id)) {
        PresetCatalog::writeInto(settings, *preset);
    } else {
        PresetCatalog::makeOwn(settings);
    }
}

template <class Value>
SettingsModel changed(const SettingsModel& settings, const Field<SettingsModel, Value>& field,
                      Value value) {
    SettingsModel next = settings;
    if constexpr (std::is_same_v<Value, std::string>) {
        if (field.key == "activePresetID") {
            adoptPreset(next, value);
            return next;
        }
    }
    if (isTiming(field.key)) {
        PresetCatalog::makeOwn(next);
        if (next.*field.member == value) {
            return settings;
        }
    }
    next.*field.member = std::move(value);
    return next;
}

// Runs `visit` on the field of that name; whether there is one.
bool visitField(std::string_view name, const auto& visit) {
    bool isFound = false;
    forEachField<SettingsModel>([&](const auto& field) {
        if (field.key == name) {
            isFound = true;
            visit(field);
        }
    });
    return isFound;
}

}  // namespace

std::vector<std::string_view> names() {
    std::vector<std::string_view> all;
    forEachField<SettingsModel>([&all](const auto& field) { all.push_back(field.key); });
    return all;
}

std::optional<std::string> valueOf(const SettingsModel& settings, std::string_view name) {
    std::optional<std::string> text;
    visitField(name, [&]<class Value>(const Field<SettingsModel, Value>& field) {
        const Json value = asJson(settings.*field.member);
        text = value.is_string() ? value.template get<std::string>() : value.dump();
    });
    return text;
}

std::vector<std::string> choices(std::string_view name, const Languages& languages) {
    std::vector<std::string> all;
    visitField(name, [&]<class Value>(const Field<SettingsModel, Value>&) {
        all = choicesOf<Value>(name, languages);
    });
    return all;
}

Change change(const SettingsModel& settings, std::string_view name, const std::string& text,
              const Languages& languages) {
    Change result;
    const bool isFound =
        visitField(name, [&]<class Value>(const Field<SettingsModel, Value>& field) {
            std::optional<Value> value = read<Value>(text);
            if (!value || !isAllowed(name, *value, languages)) {
                result.problem = requirement<Value>(std::string(name), languages);
                return;
            }
            const SettingsModel next = changed(settings, field, *std::move(value));
            if constexpr (std::is_same_v<Value, HotkeyChord>) {
                const bool isStart = field.member == &SettingsModel::startBreakHotkey;
                const auto problem = HotkeyRouter::problemOf(
                    next.*field.member, isStart ? next.togglePauseHotkey : next.startBreakHotkey);
                if (problem) {
                    result.problem = *problem;
                    return;
                }
            }
            result.settings = next;
        });
    if (!isFound) {
        result.problem = {"cli.setting.unknown %@", {std::string(name)}};
    }
    return result;
}

std::string document(const SettingsModel& settings) {
    constexpr int kIndent = 2;
    return asJson(settings).dump(kIndent) + '\n';
}

}  // namespace ostrel::SettingValues
