#include "app/simulator/scenario.h"

#include <array>
#include <set>
#include <utility>

#include "app/simulator/scenario_presence.h"
#include "app/simulator/scenario_reader.h"
#include "core/settings/preset_catalog.h"
#include "core/settings/settings_model.h"

namespace ostrel {
namespace {

constexpr double kLongestSec = 1e9;  // a good thirty years
// So that no run leaves the years of the calendar.
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 9000;

std::string inQuotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

double seconds(ScenarioReader& in, const Json& json, double least) {
    const auto value = in.read<double>(json, "a number of seconds");
    if (value < least || value > kLongestSec) {
        in.fail("a number of seconds out of range");
    }
    return value;
}

std::string timeZone(ScenarioReader& in, const Json& json) {
    auto name = in.read<std::string>(json, "the name of a time zone");
    if (in.ok() && !isKnownTimeZone(name)) {
        in.fail("unknown time zone " + inQuotes(name));
    }
    return name;
}

LocalTime localTime(ScenarioReader& in, const Json& json) {
    const auto text = in.read<std::string>(json, "a local date and time");
    auto time = parseLocalTime(text);
    if (time && (time->day.year < kFirstYear || time->day.year > kLastYear)) {
        time.reset();
    }
    if (in.ok() && !time) {
        in.fail(R"(not a local date and time such as "2026-03-09T09:00:00": )" + inQuotes(text));
    }
    return time.value_or(LocalTime{});
}

enum class UserPresence { active, away };
constexpr std::array<std::string_view, 2> enumNames(UserPresence) {
    return {"active", "away"};
}

NotificationResponse notificationAnswer(ScenarioReader& in, const Json& json) {
    NotificationResponse response;
    in.eachKey(json, "an answer to a notification", [&](const std::string& key, const Json& value) {
        const auto place = in.enter(key);
        if (key == "action") {
            response.action = in.read<std::string>(value, "an action identifier");
        } else if (key == "category") {
            response.category = in.read<std::string>(value, "a category identifier");
        } else if (key == "userInfo") {
            in.eachKey(value, "the user info", [&](const std::string& name, const Json& text) {
                response.userInfo[name] = in.read<std::string>(text, "an object of texts");
            });
        } else {
            in.fail("unknown key");
        }
    });
    if (in.ok() && !response.action && response.category.empty()) {
        in.fail("an answer has an action, or the category of a plain tap");
    }
    return response;
}

Json settingsFields(ScenarioReader& in, const Json& json) {
    in.eachKey(json, "an object of settings", [&](const std::string& key, const Json& value) {
        bool isKnown = false;
        forEachField<SettingsModel>([&]<class Value>(const Field<SettingsModel, Value>& field) {
            if (field.key == key) {
                isKnown = true;
                if (!JsonCodec<Value>::decode(value)) {
                    in.fail("settings field " + inQuotes(key) + " cannot hold " + value.dump());
                }
            }
        });
        if (!isKnown) {
            in.fail("unknown settings field " + inQuotes(key));
        }
    });
    return json;
}

std::string presetID(ScenarioReader& in, const Json& json) {
    auto id = in.read<std::string>(json, "the identifier of a preset");
    if (in.ok() && !PresetCatalog::find(id)) {
        in.fail("unknown preset " + inQuotes(id));
    }
    return id;
}

PauseDuration pauseDuration(ScenarioReader& in, const Json& json) {
    if (json == "untilNextMorning") {
        return PauseDuration::untilNextMorning();
    }
    if (json == "indefinite") {
        return PauseDuration::indefinite();
    }
    std::optional<std::int64_t> minutes;
    if (json.is_object() && json.size() == 1 && json.contains("minutes")) {
        minutes = JsonCodec<std::int64_t>::decode(json["minutes"]);
    }
    if (!minutes || *minutes < 0 || *minutes > static_cast<std::int64_t>(kLongestSec)) {
        in.fail(R"(must be {"minutes": 30}, "untilNextMorning" or "indefinite")");
    }
    return PauseDuration::forMinutes(minutes.value_or(0));
}

void onlyTrue(ScenarioReader& in, const Json& json) {
    if (json != true) {
        in.fail("must be true");
    }
}

std::optional<std::string> snapshotLabel(ScenarioReader& in, const Json& json) {
    if (json.is_string()) {
        return json.get<std::string>();
    }
    onlyTrue(in, json);
    return std::nullopt;
}

using ReadAction = StepAction (*)(ScenarioReader& in, const Json& value);

constexpr std::pair<std::string_view, ReadAction> kVerbs[] = {
    {"displays",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetDisplays{ScenarioPresence::displays(in, v)};
     }},
    {"user",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetUser{in.read<UserPresence>(v, R"("active" or "away")") ==
                              UserPresence::away};
     }},
    {"idleSec",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetIdle{seconds(in, v, 0)};
     }},
    {"frontmost",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetFrontmost{ScenarioPresence::frontmost(in, v)};
     }},
    {"windows",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetWindows{ScenarioPresence::windows(in, v)};
     }},
    {"assertions",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetAssertions{ScenarioPresence::assertions(in, v)};
     }},
    {"announce",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::Announce{ScenarioPresence::announcement(in, v)};
     }},
    {"hotkey",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::PressHotkey{
             in.read<HotkeyRouter::Action>(v, R"("startBreak" or "togglePause")")};
     }},
    {"validateChord",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::ValidateChord{ScenarioPresence::chord(in, v)};
     }},
    {"becomeActive",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         onlyTrue(in, v);
         return step::BecomeActive{};
     }},
    {"sleepSec",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::Sleep{seconds(in, v, 0)};
     }},
    {"shiftClockSec",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::ShiftClock{seconds(in, v, -kLongestSec)};
     }},
    {"timeZone",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::SetTimeZone{timeZone(in, v)};
     }},
    {"settings",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::ChangeSettings{settingsFields(in, v)};
     }},
    {"applyPreset",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::ApplyPreset{presetID(in, v)};
     }},
    {"pause",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::Pause{pauseDuration(in, v)};
     }},
    {"resume",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         onlyTrue(in, v);
         return step::Resume{};
     }},
    {"startNow",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::StartNow{in.read<BreakLogEntry::Kind>(v, R"("eye" or "body")")};
     }},
    {"key",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::PressKey{in.read<std::uint32_t>(v, "a virtual key code")};
     }},
    {"overlay",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::PressOverlay{in.read<OverlayAction>(
             v, R"("done", "skip", "postpone", "gentle_done" or "gentle_skip")")};
     }},
    {"toast",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::PressToast{in.read<std::string>(v, "an action identifier or \"dismiss\"")};
     }},
    {"notification",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::AnswerNotification{notificationAnswer(in, v)};
     }},
    {"relaunchAfterSec",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::Relaunch{seconds(in, v, 0)};
     }},
    {"failEncoding",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::FailEncoding{in.read<bool>(v, "true or false")};
     }},
    {"report",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::PrintReport{
             in.read<ReportSummaryView::Range>(v, R"("weekly", "monthly" or "full")")};
     }},
    {"snapshot",
     [](ScenarioReader& in, const Json& v) -> StepAction {
         return step::Snapshot{snapshotLabel(in, v)};
     }},
};

Step readStep(ScenarioReader& in, const Json& json, double previousAt) {
    Step result;
    bool hasAt = false;
    int verbs = 0;
    in.eachKey(json, "a step", [&](const std::string& key, const Json& value) {
        if (key == "at") {
            result.at = seconds(in, value, 0);
            hasAt = true;
            return;
        }
        ++verbs;
        for (const auto& [verb, readAction] : kVerbs) {
            if (verb == key) {
                const auto place = in.enter(key);
                result.action = readAction(in, value);
                return;
            }
        }
        in.fail("unknown verb " + inQuotes(key));
    });
    if (!hasAt) {
        in.fail(R"("at" is missing)");
    } else if (verbs != 1) {
        in.fail("a step has exactly one verb");
    } else if (result.at < previousAt) {
        in.fail(R"("at" is earlier than in the step before)");
    }
    return result;
}

std::map<std::string, std::string> preferences(ScenarioReader& in, const Json& json) {
    std::map<std::string, std::string> documents;
    in.eachKey(json, "an object of documents", [&](const std::string& key, const Json& value) {
        documents[key] = value.is_string() ? value.get<std::string>() : value.dump();
    });
    return documents;
}

std::vector<Step> steps(ScenarioReader& in, const Json& json) {
    std::vector<Step> result;
    if (!json.is_array()) {
        in.fail("must be a list of steps");
        return result;
    }
    double previousAt = 0;
    for (std::size_t i = 0; i < json.size() && in.ok(); ++i) {
        const auto place = in.enterItem(i);
        result.push_back(readStep(in, json[i], previousAt));
        previousAt = result.back().at;
    }
    return result;
}

}  // namespace

ScenarioResult parseScenario(std::string_view text) {
    const std::optional<Json> json = parseJson(text);
    if (!json) {
        return {std::nullopt, "not a JSON document"};
    }
    ScenarioReader in;
    Scenario scenario;
    bool hasDuration = false;
    in.eachKey(*json, "a scenario", [&](const std::string& key, const Json& value) {
        const auto place = in.enter(key);
        if (key == "timeZone") {
            scenario.timeZone = timeZone(in, value);
        } else if (key == "start") {
            scenario.start = localTime(in, value);
        } else if (key == "durationSec") {
            scenario.durationSec = seconds(in, value, 0);
            hasDuration = true;
        } else if (key == "preferences") {
            scenario.preferences = preferences(in, value);
        } else if (key == "displays") {
            scenario.displays = ScenarioPresence::displays(in, value);
        } else if (key == "reduceMotion") {
            scenario.reduceMotion = in.read<bool>(value, "true or false");
        } else if (key == "steps") {
            scenario.steps = steps(in, value);
        } else {
            in.fail("unknown key");
        }
    });
    if (in.ok() && !hasDuration) {
        in.fail(R"("durationSec" is missing)");
    }
    if (!in.ok()) {
        return {std::nullopt, in.error()};
    }
    return {std::move(scenario), {}};
}

}  // namespace ostrel
