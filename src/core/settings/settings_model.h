#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "core/settings/hotkey_chord.h"
#include "core/settings/json_record.h"
#include "core/settings/settings_defaults.h"

namespace ostrel {

enum class OverlayTint { ink, black, navy, sage };
constexpr std::array<std::string_view, 4> enumNames(OverlayTint) {
    return {"ink", "black", "navy", "sage"};
}

enum class OverlayStyle { guided, minimal };
constexpr std::array<std::string_view, 2> enumNames(OverlayStyle) {
    return {"guided", "minimal"};
}

enum class BreakPresentation { fullScreen, gentle };
constexpr std::array<std::string_view, 2> enumNames(BreakPresentation) {
    return {"fullScreen", "gentle"};
}

// Everything the user can configure: a plain value, changed only through the SettingsStore.
//
// No value is cross-checked: an interval outside TimingRanges, a start after the end or an empty
// set of work days is taken as it stands.
struct SettingsModel {
    enum class Appearance { system, light, dark };
    enum class ChimeMode { off, start, end, both };

    bool launchAtLogin = false;
    bool strictMode = false;
    bool detectUserIdle = true;
    bool pauseDuringDND = true;
    bool delayBreakOnFullscreenVideo = true;
    bool detectVideoPlayback = true;
    std::int64_t idleThresholdSec = IdleDefaults::kThresholdSec;
    bool creditAwayAsBreak = true;
    std::vector<std::string> deferAppBundleIDs = PresenceDefaults::deferAppBundleIDs();
    std::int64_t maxDeferralSec = PresenceDefaults::kMaxDeferralSec;
    std::int64_t eyeBreakIntervalSec = SettingsDefaults::kEyeIntervalSec;
    std::int64_t eyeBreakDurationSec = SettingsDefaults::kEyeDurationSec;
    std::int64_t bodyBreakIntervalSec = SettingsDefaults::kBodyIntervalSec;
    std::int64_t bodyBreakDurationSec = SettingsDefaults::kBodyDurationSec;
    bool mergeNearbyBreaks = true;
    bool workHoursEnabled = false;
    std::int64_t workHoursStartMinute = WorkHoursDefaults::kStartMinute;
    std::int64_t workHoursEndMinute = WorkHoursDefaults::kEndMinute;
    std::set<std::int64_t> workDays = WorkHoursDefaults::workDays();
    bool notifyDayEnd = true;
    std::string activePresetID{SettingsDefaults::kPresetID};
    ChimeMode chimeMode = ChimeMode::both;
    OverlayTint overlayTint = OverlayTint::ink;
    double overlayDimOpacity = SettingsDefaults::kOverlayDimOpacity;
    OverlayStyle overlayStyle = OverlayStyle::guided;
    std::vector<std::string> customBreakMessages;
    BreakPresentation eyePresentation = BreakPresentation::fullScreen;
    BreakPresentation bodyPresentation = BreakPresentation::fullScreen;
    std::int64_t dailyGoalBreaks = SettingsDefaults::kDailyGoalBreaks;
    bool disableSkipPenalty = false;
    HotkeyChord startBreakHotkey{11, HotkeyChord::kCommand + HotkeyChord::kShift, "⌘⇧B"};
    HotkeyChord togglePauseHotkey{35, HotkeyChord::kControl + HotkeyChord::kCommand, "⌃⌘P"};
    bool notifyBreakSoon = false;  // read by the reminders migration alone
    bool notifyConsecutiveSkips = true;
    bool notifyPauseForgotten = true;
    bool notifyWeeklySummary = true;
    std::int64_t breakSoonLeadSec = PreBreakDefaults::kBreakSoonLeadSec;  // 0: never
    std::int64_t preBreakToastLeadSec = PreBreakDefaults::kToastLeadSec;  // 0: never
    bool remindersMigrated = true;
    bool hasOnboarded = false;
    Appearance appearance = Appearance::system;
    std::string languageRaw = "system";  // or a language code
    bool ostrelEnabled = true;
    bool presetDurationsNormalized = true;

    bool operator==(const SettingsModel&) const = default;

    // Reads field by field: one that is missing, null or of the wrong type keeps its default and
    // costs nothing else. Absent only when `json` is no object.
    [[nodiscard]] static std::optional<SettingsModel> decode(const Json& json);

    static constexpr auto fields() {
        using S = SettingsModel;
        return std::tuple{
            Field{"launchAtLogin", &S::launchAtLogin},
            Field{"strictMode", &S::strictMode},
            Field{"detectUserIdle", &S::detectUserIdle},
            Field{"pauseDuringDND", &S::pauseDuringDND},
            Field{"delayBreakOnFullscreenVideo", &S::delayBreakOnFullscreenVideo},
            Field{"detectVideoPlayback", &S::detectVideoPlayback},
            Field{"idleThresholdSec", &S::idleThresholdSec},
            Field{"creditAwayAsBreak", &S::creditAwayAsBreak},
            Field{"deferAppBundleIDs", &S::deferAppBundleIDs},
            Field{"maxDeferralSec", &S::maxDeferralSec},
            Field{"eyeBreakIntervalSec", &S::eyeBreakIntervalSec},
            Field{"eyeBreakDurationSec", &S::eyeBreakDurationSec},
            Field{"bodyBreakIntervalSec", &S::bodyBreakIntervalSec},
            Field{"bodyBreakDurationSec", &S::bodyBreakDurationSec},
            Field{"mergeNearbyBreaks", &S::mergeNearbyBreaks},
            Field{"workHoursEnabled", &S::workHoursEnabled},
            Field{"workHoursStartMinute", &S::workHoursStartMinute},
            Field{"workHoursEndMinute", &S::workHoursEndMinute},
            Field{"workDays", &S::workDays},
            Field{"notifyDayEnd", &S::notifyDayEnd},
            Field{"activePresetID", &S::activePresetID},
            Field{"chimeMode", &S::chimeMode},
            Field{"overlayTint", &S::overlayTint},
            Field{"overlayDimOpacity", &S::overlayDimOpacity},
            Field{"overlayStyle", &S::overlayStyle},
            Field{"customBreakMessages", &S::customBreakMessages},
            Field{"eyePresentation", &S::eyePresentation},
            Field{"bodyPresentation", &S::bodyPresentation},
            Field{"dailyGoalBreaks", &S::dailyGoalBreaks},
            Field{"disableSkipPenalty", &S::disableSkipPenalty},
            Field{"startBreakHotkey", &S::startBreakHotkey},
            Field{"togglePauseHotkey", &S::togglePauseHotkey},
            Field{"notifyBreakSoon", &S::notifyBreakSoon},
            Field{"notifyConsecutiveSkips", &S::notifyConsecutiveSkips},
            Field{"notifyPauseForgotten", &S::notifyPauseForgotten},
            Field{"notifyWeeklySummary", &S::notifyWeeklySummary},
            Field{"breakSoonLeadSec", &S::breakSoonLeadSec},
            Field{"preBreakToastLeadSec", &S::preBreakToastLeadSec},
            Field{"remindersMigrated", &S::remindersMigrated},
            Field{"hasOnboarded", &S::hasOnboarded},
            Field{"appearance", &S::appearance},
            Field{"languageRaw", &S::languageRaw},
            Field{"ostrelEnabled", &S::ostrelEnabled},
            Field{"presetDurationsNormalized", &S::presetDurationsNormalized},
        };
    }
};

constexpr std::array<std::string_view, 3> enumNames(SettingsModel::Appearance) {
    return {"system", "light", "dark"};
}
constexpr std::array<std::string_view, 4> enumNames(SettingsModel::ChimeMode) {
    return {"off", "start", "end", "both"};
}

}  // namespace ostrel
