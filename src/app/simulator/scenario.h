#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/engine/pause_duration.h"
#include "core/settings/json.h"
#include "overlay/active_overlay_session.h"
#include "platform/api/displays.h"
#include "platform/api/distributed_announcements.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/power_assertions.h"
#include "platform/api/screen_windows.h"
#include "platform/api/system_notifications.h"
#include "platform/calendar/local_time.h"
#include "presence/hotkey_router.h"
#include "records/report_summary.h"

namespace ostrel {

struct ScenarioDisplays {
    std::vector<Displays::Display> displays;
    std::optional<std::uint32_t> mainID;
};

// What a step does; one type per verb.
namespace step {
struct SetDisplays {
    ScenarioDisplays displays;
};
struct SetUser {
    bool isAway;
};
struct SetIdle {
    double seconds;
};
struct SetFrontmost {
    std::optional<FrontmostApplication::Application> application;
};
struct Sleep {
    double seconds;
};
struct ShiftClock {
    double seconds;
};
struct SetTimeZone {
    std::string name;
};
struct BecomeActive {};
struct ChangeSettings {
    Json fields;
};
struct ApplyPreset {
    std::string id;
};
struct Pause {
    PauseDuration duration;
};
struct Resume {};
struct StartNow {
    BreakLogEntry::Kind kind;
};
struct SetWindows {
    std::vector<ScreenWindows::Window> windows;
};
struct SetAssertions {
    PowerAssertions::ByProcess assertions;
};
struct Announce {
    DistributedAnnouncements::Announcement announcement;
};
struct PressHotkey {
    HotkeyRouter::Action action;
};
struct ValidateChord {
    HotkeyChord chord;
};
struct PressKey {
    std::uint32_t keyCode;
};
struct PressOverlay {
    OverlayAction action;
};
struct PressToast {
    std::string actionID;  // or "dismiss"
};
struct AnswerNotification {
    NotificationResponse response;
};
struct Relaunch {
    double afterSec;
};
struct FailEncoding {
    bool fails;
};
struct PrintReport {
    ReportSummaryView::Range range;
};
struct Snapshot {
    std::optional<std::string> label;
};
}  // namespace step

using StepAction =
    std::variant<step::SetDisplays, step::SetUser, step::SetIdle, step::SetFrontmost, step::Sleep,
                 step::ShiftClock, step::SetTimeZone, step::BecomeActive, step::ChangeSettings,
                 step::ApplyPreset, step::Pause, step::Resume, step::StartNow, step::PressKey,
                 step::PressOverlay, step::PressToast, step::AnswerNotification, step::Relaunch,
                 step::FailEncoding, step::PrintReport, step::Snapshot, step::SetWindows,
                 step::SetAssertions, step::Announce, step::PressHotkey, step::ValidateChord>;

struct Step {
    double at = 0;  // seconds since the start, never decreasing
    StepAction action;
};

// A scripted stretch of time, checked: every value in it can be used.
struct Scenario {
    std::string timeZone = "UTC";
    LocalTime start{{2026, 3, 9}, 9, 0, 0};
    double durationSec = 0;
    std::map<std::string, std::string> preferences;  // bytes by key
    ScenarioDisplays displays{{{1, {0, 0, 1920, 1080}}}, 1};
    bool reduceMotion = false;
    std::vector<Step> steps;
};

struct ScenarioResult {
    std::optional<Scenario> scenario;
    std::string error;  // what is wrong and where: `steps[3]: unknown verb "frontmots"`
};

[[nodiscard]] ScenarioResult parseScenario(std::string_view text);

}  // namespace ostrel
