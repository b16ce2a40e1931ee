#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "platform/calendar/local_time.h"
#include "records/break_log_export.h"

namespace ostrel::stored {

using Documents = std::map<std::string, std::string, std::less<>>;

inline constexpr const char* kSettings = "ostrel.settings.v1";
inline constexpr const char* kSession = "ostrel.sessionState.v1";
inline constexpr const char* kLog = "ostrel.breakLog.v1";
inline constexpr const char* kCounter = "ostrel.dailyCounter.v1";
inline constexpr const char* kPool = "ostrel.penaltyPool.v1";
inline constexpr const char* kLedger = "ostrel.penaltyLedger.v1";
inline constexpr const char* kQuota = "ostrel.postponeQuota.v1";
inline constexpr const char* kStreak = "ostrel.streak.v1";
inline constexpr const char* kDayEnd = "ostrel.dayEnd.v1";
inline constexpr const char* kRotation = "ostrel.guidedRotation.v1";
inline constexpr const char* kTally = "ostrel.presenceTally.v1";

inline constexpr const char* kZone = "Europe/Berlin";
[[nodiscard]] inline WallTime at(const char* local) {
    return wallTimeOf(*parseLocalTime(local), kZone);
}

// A program over given documents, and somebody who works with it.
class Desk : DayEndNotifying {
  public:
    Desk(Documents documents, WallTime start, Documents instead = {}) : platform_(kZone, start) {
        instead.merge(documents);
        for (const auto& [key, bytes] : instead) {
            platform_.preferences.write(key, bytes);
        }
        failures_ = platform_.preferences.persistenceWriteFailed.subscribe(
            [this](const PersistenceError& error) { failed.push_back(error.key); });
        launch();
    }

    void launch() {
        environment_ =
            std::make_unique<AppEnvironment>(platform_.platform(seededUuids(++launches_)));
        environment_->launch();
        announcer_ = std::make_unique<DayEndAnnouncer>(DayEndAnnouncer::Services{
            platform_.preferences, environment_->settingsStore(), environment_->breakLog(),
            platform_.calendar, [this] { return now(); }, this});
    }
    void quit() {
        environment_->quit();
        announcer_.reset();
        environment_.reset();
    }
    void run(double seconds) { platform_.runLoop.runFor(runLoopSec(seconds)); }
    // Time goes by, and nothing runs.
    void waitUntil(WallTime time) { platform_.runLoop.shiftWallClock(time - now()); }

    enum class Way { complete, fadeOut, skip, postpone };
    void takeBreak(BreakKind kind, Way way) {
        OverlayManager& overlay = environment_->overlayManager();
        overlay.close(CloseReason::forcedBySleep);
        environment_->timerEngine().startNow(kind);
        run(2);
        if (way == Way::skip || way == Way::postpone) {
            overlay.press(way == Way::skip ? OverlayAction::skip : OverlayAction::postpone);
        }
        const auto& session = *overlay.activeSession();
        if (session && session->remainingSec <= 1000) {
            run(static_cast<double>(session->remainingSec) + (way == Way::fadeOut ? 2 : 0.5));
        }
        overlay.close(CloseReason::done);
    }

    void sitInMeeting(double seconds) {
        platform_.frontmost.set({{"us.zoom.xos", 1}});
        run(seconds);
        platform_.frontmost.set(std::nullopt);
    }
    void change(const std::function<void(SettingsModel&)>& change) {
        environment_->settingsStore().update(change);
    }
    void endWorkDay() { announcer_->dayEnded(); }
    void readAll() {
        using Range = ReportSummaryView::Range;
        const auto& entries = *environment_->breakLog().entries();
        static_cast<void>(environment_->reportSummary().stats(Range::full));
        static_cast<void>(environment_->reportSummary().dayBuckets(entries, Range::full));
        static_cast<void>(exportCsv(entries, platform_.calendar));
        static_cast<void>(exportJson(entries, platform_.calendar));
    }

    [[nodiscard]] WallTime now() const { return platform_.runLoop.wallNow(); }
    [[nodiscard]] const Documents& documents() const { return platform_.preferences.contents(); }
    [[nodiscard]] const std::multimap<std::string, std::string>& damaged() const {
        return platform_.preferences.damaged();
    }
    AppEnvironment& environment() { return *environment_; }
    VirtualPlatform& platform() { return platform_; }

    // The records as the program has them in memory.
    [[nodiscard]] std::map<std::string, Json> records() {
        AppEnvironment& its = *environment_;
        const PostponeQuota& quota = its.postponeQuota();
        const Streak& streak = *its.streakTracker().streak();
        return {{kSettings, asJson(*its.settingsStore().settings())},
                {kSession, asJson(*its.sessionStateStore().current())},
                {kLog, asJson(*its.breakLog().entries())},
                {kCounter, asJson(*its.dailyCounter().model())},
                {kPool, *its.penaltyEngine().unconsumedPenaltySec()},
                {kLedger, asJson(*its.penaltyLedger().skipEvents())},
                {kQuota, {*quota.used(), secondsSinceReference(*quota.windowStart())}},
                {kStreak, {streak.currentDays, streak.longestDays}},
                {kTally, asJson(*its.presenceTally().days())}};
    }

    std::vector<std::string> failed;  // what could not be encoded, by key

  private:
    void postDayEnd(std::int64_t /*completed*/, std::int64_t /*goal*/) override {}

    VirtualPlatform platform_;
    std::uint64_t launches_ = 0;
    std::unique_ptr<AppEnvironment> environment_;
    std::unique_ptr<DayEndAnnouncer> announcer_;
    Subscription failures_;
};

inline constexpr int kQuietSec = 150;  // the pool is looked after twice

// Documents as a program left them, and what it makes of them when it is launched again.
struct Scene {
    WallTime start;
    Documents documents;
    Documents afterLaunch{};
    Documents afterQuietTime{};
};

inline void setUp(SettingsModel& settings) {
    settings.activePresetID = "mine";
    settings.eyeBreakIntervalSec = 900;
    settings.eyeBreakDurationSec = 30;
    settings.bodyBreakIntervalSec = 2400;
    settings.bodyBreakDurationSec = 180;
    settings.workHoursEnabled = true;
    settings.dailyGoalBreaks = 2;
    settings.maxDeferralSec = 60;
    settings.customBreakMessages = {"Stand up", "Schultern locker lassen \xE2\x80\x93 atmen"};
    settings.hasOnboarded = true;
}

// Two days in January, a long holiday, and three days in March.
inline void workForSomeTime(Desk& desk) {
    using Way = Desk::Way;
    desk.change(setUp);
    for (const char* day : {"2026-01-08T09:00:00", "2026-01-09T09:00:00", "2026-03-24T09:00:00",
                            "2026-03-25T09:00:00", "2026-03-26T09:00:00"}) {
        desk.quit();
        desk.waitUntil(at(day));
        desk.launch();
        desk.takeBreak(BreakKind::eye, Way::complete);
        desk.takeBreak(BreakKind::body, Way::fadeOut);
        desk.takeBreak(BreakKind::eye, Way::skip);
        if (day != std::string("2026-03-26T09:00:00")) {
            desk.waitUntil(at(day) + std::chrono::hours(9));
            desk.endWorkDay();
        }
    }
    desk.sitInMeeting(1200);
    desk.takeBreak(BreakKind::eye, Way::skip);
    desk.takeBreak(BreakKind::eye, Way::complete);
    desk.takeBreak(BreakKind::body, Way::skip);
    desk.takeBreak(BreakKind::eye, Way::skip);
    desk.takeBreak(BreakKind::body, Way::postpone);
}

inline std::vector<Scene> makeScenes() {
    Desk desk({}, at("2026-01-08T08:00:00"));
    workForSomeTime(desk);
    desk.quit();
    std::vector<Scene> scenes{{desk.now() + wallSec(300), desk.documents()}};
    desk.launch();
    desk.environment().timerEngine().pauseByUser(PauseDuration::forMinutes(120));
    desk.platform().systemEvents.willSleep.send();
    desk.quit();
    scenes.push_back({desk.now() + wallSec(300), desk.documents()});
    // After a week-end in which the clocks went forward.
    scenes.push_back({at("2026-03-30T09:00:00"), desk.documents()});
    for (Scene& scene : scenes) {
        Desk control(scene.documents, scene.start);
        scene.afterLaunch = control.documents();
        control.run(kQuietSec);
        scene.afterQuietTime = control.documents();
    }
    return scenes;
}

[[nodiscard]] inline const std::vector<Scene>& scenes() {
    static const std::vector<Scene> kScenes = makeScenes();
    return kScenes;
}

}  // namespace ostrel::stored
