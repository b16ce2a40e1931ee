#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "support/document_scenes.h"
#include "support/stored_documents.h"

// What one damaged document means to the program and to the other documents, told without the
// program's own readers.
namespace ostrel::stored {

// One damaged document among the others of a scene.
struct Damage {
    std::string key;
    std::string bytes;
    const Scene& scene;
    std::optional<Json> json = parsed(bytes);
    bool readable = json && isReadable(key, *json);

    [[nodiscard]] bool isReadableAs(const char* document) const {
        return readable && key == document;
    }
    [[nodiscard]] double startSec() const { return secondsSinceReference(scene.start); }
};

enum class Moment { afterLaunch, afterQuietTime };

[[nodiscard]] inline const Json& valueOf(const Json& object, const char* key) {
    static const Json kNull;
    const auto found = object.find(key);
    return found == object.end() ? kNull : *found;
}

[[nodiscard]] inline bool holdsPause(const Damage& damage) {
    if (damage.key != kSession) {
        return damage.scene.kind == Scene::Kind::paused;
    }
    if (!damage.readable) {
        return false;
    }
    const Json& reasons = valueOf(*damage.json, "pauseReasons");
    const Json& until = valueOf(*damage.json, "userPauseUntil");
    return std::ranges::find(reasons, Json("user")) != reasons.end() && until.is_number() &&
           until.get<double>() > damage.startSec() &&
           until.get<double>() <= damage.startSec() + 86'400;
}

[[nodiscard]] inline bool ticks(const Damage& damage) {
    const bool isOff =
        damage.isReadableAs(kSettings) && valueOf(*damage.json, "ostrelEnabled") == Json(false);
    return !isOff && !holdsPause(damage);
}

// An eye break skipped within the hour before that moment.
[[nodiscard]] inline bool holdsEyeSkip(const Json& ledger, double nowSec) {
    return std::ranges::any_of(ledger, [nowSec](const Json& skip) {
        return skip["kind"] == Json("eye") && skip["occurredAt"].get<double>() >= nowSec - 3600;
    });
}

// The days between the two visits, as settings see them. None of them has a break.
[[nodiscard]] inline std::string rejudged(const std::string& streak, const Json& settings) {
    static const std::map<std::string, int> kWeekdays = {
        {"2026-03-27", 6}, {"2026-03-28", 7}, {"2026-03-29", 1}};
    const bool hasDaysOff = valueOf(settings, "workHoursEnabled") == Json(true);
    Json workDays = valueOf(settings, "workDays");
    if (!listOf(isInteger)(workDays)) {
        workDays = {2, 3, 4, 5, 6};
    }
    Json record = Json::parse(streak);
    for (Json& judged : record["recent"]) {
        if (const auto day = kWeekdays.find(judged["day"]); day != kWeekdays.end()) {
            const bool isWorkDay = std::ranges::find(workDays, Json(day->second)) != workDays.end();
            judged["verdict"] = hasDaysOff && !isWorkDay ? "free" : "missed";
        }
    }
    return record.dump();
}

// Whether breaks that the log has now may have reached the goal on a day that is yet to be judged.
[[nodiscard]] inline bool mayReachGoal(const Damage& damage) {
    if (!damage.isReadableAs(kLog) || damage.scene.kind != Scene::Kind::daysLater) {
        return false;
    }
    return std::ranges::count_if(*damage.json, [](const Json& entry) {
               const double endedAt = entry["endedAt"].get<double>();
               const Json& outcome = entry["outcome"];
               return endedAt >= secondsSinceReference(at("2026-03-27T00:00:00")) &&
                      endedAt < secondsSinceReference(at("2026-03-31T00:00:00")) &&
                      (outcome == Json("completed") || outcome == Json("autoFadeOut"));
           }) >= 2;
}

// The other documents are as beside the undamaged one, but for what the damaged one now says. Left
// out: the damaged one itself, and a streak of which only the program can say what it is.
[[nodiscard]] inline Documents expectedOthers(const Damage& damage, Moment moment) {
    const Scene& scene = damage.scene;
    const bool isQuietTimeOver = moment == Moment::afterQuietTime;
    Documents expected = isQuietTimeOver ? scene.afterQuietTime : scene.afterLaunch;
    if (!ticks(damage)) {
        // Nobody looks after what skips have cost.
        expected[kLedger] = scene.afterLaunch.at(kLedger);
        expected[kPool] = scene.afterLaunch.at(kPool);
    }
    if (damage.key == kSettings) {
        if (scene.kind == Scene::Kind::daysLater) {
            const Json defaults = Json::object();
            expected[kStreak] =
                rejudged(expected[kStreak], damage.readable ? *damage.json : defaults);
        }
        if (damage.readable && valueOf(*damage.json, "disableSkipPenalty") == Json(true)) {
            expected.erase(kLedger);
            expected.erase(kPool);
        }
    }
    if (damage.key == kLedger && isQuietTimeOver && scene.kind == Scene::Kind::working) {
        // What is left in the pool lapses without a skip of an eye break behind it.
        for (const double nowSec : {damage.startSec() + 60, damage.startSec() + 120}) {
            if (!damage.readable || !holdsEyeSkip(*damage.json, nowSec)) {
                expected[kPool] = Json{{"seconds", 0}, {"savedAt", nowSec}}.dump();
                break;
            }
        }
    }
    if (mayReachGoal(damage)) {
        expected.erase(kStreak);
    }
    expected.erase(damage.key);
    return expected;
}

// Whether the program has a reason to write the damaged record by then.
[[nodiscard]] inline bool isDueToBeWritten(const Damage& damage, Moment moment) {
    const Scene& scene = damage.scene;
    const bool isQuietTimeOver = moment == Moment::afterQuietTime;
    if (!damage.readable) {
        // Settings are complete from the first launch on; the days that the log knows are judged.
        return damage.key == kSettings || damage.key == kStreak;
    }
    const Json& json = *damage.json;
    if (damage.key == kSettings) {
        return valueOf(json, "remindersMigrated") == Json(false) ||
               valueOf(json, "presetDurationsNormalized") == Json(false);
    }
    if (damage.key == kSession) {
        const bool isReminderLeft = valueOf(json, "pendingPauseForgottenFireAt").is_number();
        return holdsPause(damage) ? isQuietTimeOver && json["userPauseUntil"].get<double>() <=
                                                           damage.startSec() + kQuietSec
                                  : isReminderLeft;
    }
    if (damage.key == kCounter) {
        return json["dateKey"] != Json::parse(scene.afterLaunch.at(kCounter))["dateKey"];
    }
    if (damage.key == kPool) {
        return isQuietTimeOver && scene.kind == Scene::Kind::daysLater &&
               json["seconds"].get<double>() > 0 &&
               json["savedAt"].get<double>() <= damage.startSec() &&
               json["savedAt"].get<double>() >= damage.startSec() - 3600;
    }
    if (damage.key == kLedger) {
        return isQuietTimeOver && ticks(damage) && std::ranges::any_of(json, [&](const Json& skip) {
                   return skip["occurredAt"].get<double>() < damage.startSec() + 120 - 3600;
               });
    }
    return damage.key == kStreak;
}

// Second counts near 2^63 are fatal by rule as soon as anything is added to them.
[[nodiscard]] inline bool hasHugeCount(const Json& document) {
    static const std::set<std::string> kDates = {"startedAt",
                                                 "endedAt",
                                                 "savedAt",
                                                 "windowStart",
                                                 "occurredAt",
                                                 "pausedAt",
                                                 "lastQuitAt",
                                                 "judgedAt",
                                                 "firstBreakAt",
                                                 "lastBreakAt",
                                                 "systemSleepWakeMarker",
                                                 "pendingPauseForgottenFireAt",
                                                 "userPauseUntil"};
    std::vector<const Json*> open{&document};
    while (!open.empty()) {
        const Json& json = *open.back();
        open.pop_back();
        if (isInteger(json) && std::abs(json.get<double>()) > 1e12) {
            return true;
        }
        if (json.is_structured()) {
            for (auto inner = json.begin(); inner != json.end(); ++inner) {
                if (json.is_array() || !kDates.contains(inner.key())) {
                    open.push_back(&*inner);
                }
            }
        }
    }
    return false;
}

}  // namespace ostrel::stored
