#include <gtest/gtest.h>

#include "app/environment/random_choices.h"
#include "platform/calendar/local_time.h"
#include "support/audited_schedule.h"
#include "support/random_runs.h"

namespace ostrel {
namespace {

// Does for some hours whatever a user and a system can do, and everything of it often.
class RandomUser : private RandomChoices {
  public:
    RandomUser(std::uint64_t seed, Counts& counts)
        : RandomChoices(seed), schedule_(zone(), start(), settings(), counts) {}

    // What was wrong first, empty if nothing was.
    std::string live() {
        const RunLoopTime end = schedule_.runLoopNow() + std::chrono::minutes(between(120, 360));
        while (schedule_.runLoopNow() < end && schedule_.fault().empty()) {
            comeBack();
            if (schedule_.session()) {
                schedule_.run(oneIn(4) ? between(1, 200) : between(0, 10));
            }
            schedule_.session() ? act(*this, kOnScreen) : act(*this, kBetween);
        }
        schedule_.audit().checkIdentifiers();
        return schedule_.fault();
    }

  private:
    BreakKind anyKind() { return oneIn(3) ? BreakKind::body : BreakKind::eye; }

    std::string zone() {
        return oneOf<const char*>({"UTC", "Europe/Berlin", "America/New_York", "Asia/Kolkata"});
    }
    // Some of them within hours of a change to summer time.
    WallTime start() {
        return wallTimeOf({{2026, 3, 28},
                           static_cast<int>(below(24)),
                           static_cast<int>(below(60)),
                           static_cast<int>(below(60))},
                          "UTC");
    }
    PresetDefinition preset() {
        if (oneIn(3)) {
            return oneOf(
                {PresetCatalog::light(), PresetCatalog::standard(), PresetCatalog::strict()});
        }
        return {"own",           "Own", between(200, 900), between(20, 120), between(500, 2000),
                between(30, 300)};
    }
    SettingsModel settings() {
        SettingsModel settings;
        PresetCatalog::writeInto(settings, preset());
        settings.maxDeferralSec = oneOf<std::int64_t>({10, 300, 900, 1800});
        settings.mergeNearbyBreaks = oneIn(2);
        return settings;
    }

    // Nothing that stops the schedule lasts for ever.
    void comeBack() {
        if (schedule_.isPaused() && oneIn(4)) {
            schedule_.resume();
        }
        if (!schedule_.settings().ostrelEnabled && oneIn(2)) {
            schedule_.change("schedule on", [](SettingsModel& s) { s.ostrelEnabled = true; });
        }
        if (schedule_.settings().disableSkipPenalty && oneIn(5)) {
            togglePenalties();
        }
        if (schedule_.isMeeting() && oneIn(6)) {
            toggleMeeting();
        }
    }

    void wait() {
        const bool isHeld = schedule_.audit().countdowns().heldKind().has_value();
        const bool isShort = isHeld || oneIn(schedule_.isPaused() ? 2 : 3);
        schedule_.run(isShort ? between(1, 60) : between(60, 1500));
    }
    void skip() { press(OverlayAction::skip); }
    void postpone() { press(OverlayAction::postpone); }
    void pressDone() { press(OverlayAction::done); }
    void press(OverlayAction action) {
        using By = AuditedSchedule::By;
        schedule_.press(action, oneOf({By::button, By::key}));
    }
    void skipGently() { schedule_.skipGently(); }
    void finish() {
        while (schedule_.session() && schedule_.session()->remainingSec > 0 &&
               schedule_.fault().empty()) {
            schedule_.run(
                schedule_.session()->remainingSec > 2 ? schedule_.session()->remainingSec - 1 : 1);
        }
        pressDone();
    }
    void letFade() { schedule_.run(100'000); }
    void startNow() { schedule_.startNow(anyKind()); }
    // Mostly the one that comes next, as a card would offer it.
    void postponeAhead() { schedule_.postponeAhead(oneIn(3) ? anyKind() : schedule_.nextKind()); }
    void toggleMeeting() { schedule_.setMeeting(!schedule_.isMeeting()); }
    void pause() {
        schedule_.pause(oneIn(3) ? PauseDuration::indefinite()
                                 : PauseDuration::forMinutes(between(1, 90)));
    }
    void sleep() {
        schedule_.sleep(oneOf({between(1, 900), between(900, 3600), std::int64_t{3600},
                               std::int64_t{3601}, between(3602, 36'000)}));
    }
    void applyPreset() { schedule_.applyPreset(preset()); }
    void togglePenalties() {
        schedule_.change("penalties on or off", [](SettingsModel& settings) {
            settings.disableSkipPenalty = !settings.disableSkipPenalty;
        });
    }
    void toggleMerging() {
        schedule_.change("merging on or off", [](SettingsModel& settings) {
            settings.mergeNearbyBreaks = !settings.mergeNearbyBreaks;
        });
    }
    void switchOff() {
        schedule_.change("schedule off", [](SettingsModel& s) { s.ostrelEnabled = false; });
    }
    // Also to where the pool is just an hour old.
    void relaunch() {
        const SkipModel& skips = schedule_.audit().skips();
        const double untilOldSec = (skips.pooledAt() - schedule_.now()).count() + 3600;
        if (skips.poolSec() > 0 && untilOldSec > 1 && oneIn(2)) {
            schedule_.relaunch(untilOldSec + oneOf({-0.5, 0.0, 0.5, 1.0}));
        } else {
            schedule_.relaunch(static_cast<double>(oneOf({between(0, 1200), between(1200, 7200),
                                                          between(7200, 60'000)})) /
                               2);
        }
    }
    // To the instant, where that can be: a sleep of whole seconds leads up to it.
    void skipAnHourAfterAnother() {
        const auto& skips = schedule_.audit().skips().skips();
        if (skips.empty()) {
            return;
        }
        const auto recent =
            static_cast<std::size_t>(below(std::min<std::int64_t>(std::ssize(skips), 4)));
        const double leftSec =
            (skips[skips.size() - 1 - recent].at - schedule_.now()).count() + 3600;
        if (leftSec >= 1 && leftSec < 3600 && leftSec == std::trunc(leftSec)) {
            schedule_.sleep(static_cast<std::int64_t>(leftSec) + oneOf({0, 0, 1, -1}));
            startNow();
            skip();
        }
    }

    static constexpr Choice<RandomUser> kOnScreen[] = {
        {30, &RandomUser::skip},           {6, &RandomUser::skipGently},
        {12, &RandomUser::finish},         {8, &RandomUser::letFade},
        {12, &RandomUser::postpone},       {4, &RandomUser::pressDone},
        {4, &RandomUser::startNow},        {4, &RandomUser::postponeAhead},
        {4, &RandomUser::sleep},           {4, &RandomUser::pause},
        {4, &RandomUser::relaunch},        {3, &RandomUser::applyPreset},
        {3, &RandomUser::togglePenalties}, {2, &RandomUser::toggleMerging},
        {4, &RandomUser::toggleMeeting},   {1, &RandomUser::switchOff}};
    static constexpr Choice<RandomUser> kBetween[] = {{40, &RandomUser::wait},
                                                      {14, &RandomUser::startNow},
                                                      {8, &RandomUser::postponeAhead},
                                                      {12, &RandomUser::toggleMeeting},
                                                      {6, &RandomUser::pause},
                                                      {8, &RandomUser::sleep},
                                                      {7, &RandomUser::relaunch},
                                                      {4, &RandomUser::applyPreset},
                                                      {4, &RandomUser::toggleMerging},
                                                      {2, &RandomUser::togglePenalties},
                                                      {1, &RandomUser::switchOff},
                                                      {1, &RandomUser::skip},
                                                      {6, &RandomUser::skipAnHourAfterAnother}};

    AuditedSchedule schedule_;
};

// What a run would be worth nothing without.
std::vector<std::string> allThatMustHappen() {
    std::vector<std::string> all = {"body break left a pool alone",
                                    "due break waited",
                                    "eye break carried a penalty",
                                    "hold of eye folded",
                                    "long sleep",
                                    "merge undone",
                                    "merged eye break credited",
                                    "midnight",
                                    "pause went on after a launch",
                                    "pool cleared by a long absence",
                                    "pool cleared by a preset",
                                    "pool cleared by switching penalties off",
                                    "pool restored at a launch",
                                    "pool too old at a launch",
                                    "pool went stale",
                                    "postpone refused for a break",
                                    "postpone refused for the hour",
                                    "postponed ahead",
                                    "skip an hour after another",
                                    "skip while penalties were off",
                                    "start now while a break is on screen"};
    for (const std::string kind : {"eye", "body"}) {
        for (const std::string_view reason : enumNames(CloseReason{})) {
            all.push_back(kind + " closed " + std::string(reason));
        }
        for (const char* end : {"opened", "dropped", "cancelled"}) {
            all.push_back("hold of " + kind + " " + end);
        }
        for (const char* cost : {"90", "180", "300"}) {
            all.push_back("skip of " + kind + " for " + cost);
        }
    }
    return all;
}

}  // namespace

TEST(RandomScheduleTest, ChargesCountsAndRecordsWhatTheRulesSay) {
    runSeeds({300, 10'000, 20, allThatMustHappen()},
             [](std::uint64_t seed, Counts& counts) { return RandomUser(seed, counts).live(); });
}

}  // namespace ostrel
