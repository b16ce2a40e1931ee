#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/uuid.h"
#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "platform/calendar/local_time.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_run_loop.h"
#include "support/events.h"

namespace ostrel {

// An engine on a virtual run loop with every collaborator present, which writes down all that
// leaves the engine as "SECOND what": a test names the whole of it.
class EngineBench : MeetingPresenceGuarding,
                    VideoPlaybackProbing,
                    BreakNotifying,
                    EngineToasts,
                    SkipPenalties,
                    PostponeRation,
                    BreakLogging {
  public:
    bool meetingActive = false;
    bool overlayPresented = false;
    std::vector<BreakLogEntry> log;
    std::vector<std::function<void()>> meetingCompletions;
    MemoryPreferences preferences;

    EngineBench() : EngineBench("2026-03-09T09:00:00", "UTC") {}
    EngineBench(const char* start, std::string timeZone)
        : zone(std::move(timeZone)),
          runLoop(wallTimeOf(*parseLocalTime(start), zone)),
          calendar([this] { return zone; }) {}

    void setUp(const std::function<void(SettingsModel&)>& change) { settings().update(change); }

    SettingsStore& settings() { return settings_; }
    SessionStateStore& session() { return session_; }

    // Anew, with the same settings.
    TimerEngine& launch() {
        engine_.reset();
        engine_ = std::make_unique<TimerEngine>(
            TimerEngine::Services{settings_,
                                  session_,
                                  calendar,
                                  runLoop,
                                  [this] { return runLoop.wallNow(); },
                                  seededUuids(1),
                                  {this, this, this, this, this, this, this}},
            TimerEngine::Ticking::automatic);
        engine_->setIsOverlayPresented([this] { return overlayPresented; });
        watch();
        engine_->configure(PresetCatalog::active(*settings_.settings()));
        return *engine_;
    }
    TimerEngine& launch(std::int64_t eyeSec, std::int64_t bodySec) {
        setUp([&](SettingsModel& model) {
            model.activePresetID = "bench";
            model.eyeBreakIntervalSec = eyeSec;
            model.bodyBreakIntervalSec = bodySec;
        });
        return launch();
    }

    TimerEngine& engine() { return *engine_; }

    void run(std::int64_t seconds) { runLoop.runFor(std::chrono::seconds(seconds)); }
    void finishMeetings() {
        meetingActive = false;
        for (auto& completion : std::exchange(meetingCompletions, {})) {
            completion();
        }
    }

    // What has happened since the last call.
    Events take() { return std::exchange(events_, {}); }

    std::string zone;
    VirtualRunLoop runLoop;
    ZonedCalendar calendar;

  private:
    void note(const std::string& what) {
        const auto second =
            std::chrono::duration_cast<std::chrono::seconds>(runLoop.now().time_since_epoch());
        events_.push_back(std::to_string(second.count()) + " " + what);
    }

    void watch() {
        watching_.clear();
        TimerEngine& engine = *engine_;
        watching_.push_back(engine.shouldOpenEyeBreak.subscribe(
            [this](std::int64_t penalty) { note("open eye +" + std::to_string(penalty)); }));
        watching_.push_back(engine.shouldOpenBodyBreak.subscribe(
            [this](std::int64_t penalty) { note("open body +" + std::to_string(penalty)); }));
        watching_.push_back(engine.holdEnded.subscribe([this](BreakKind kind, HoldEnd how) {
            note("hold of " + std::string(nameOf(kind)) + " " + std::string(nameOf(how)));
        }));
    }

    bool isMeetingActive() const override { return meetingActive; }
    void waitUntilClear(std::function<void()> completion) override {
        meetingCompletions.push_back(std::move(completion));
    }
    bool isVideoPlaying() const override { return false; }

    void postBreakSoon(BreakKind kind, std::int64_t leadSec, bool canPostpone) override {
        breakSoonPosted_ = true;
        note("soon " + std::string(nameOf(kind)) + " " + std::to_string(leadSec) +
             (canPostpone ? " or later" : ""));
    }
    void cancelBreakSoon() override {
        if (std::exchange(breakSoonPosted_, false)) {
            note("soon withdrawn");
        }
    }
    void schedulePauseForgotten(WallTime fireAt) override {
        forgottenScheduled_ = true;
        note("remind in " +
             std::to_string(static_cast<std::int64_t>((fireAt - runLoop.wallNow()).count())));
    }
    void restorePauseForgotten(WallTime) override {}
    void cancelPauseForgotten() override {
        if (std::exchange(forgottenScheduled_, false)) {
            note("reminder withdrawn");
        }
    }

    bool isToastOnScreen() const override { return false; }
    void show(Message message, std::optional<std::int64_t> argument, const Handlers&) override {
        static constexpr const char* kNames[] = {
            "merged", "pre-break eye", "pre-break body", "pause ended", "none left",
            "held",   "dropped",       "away both",      "away eye",    "away body"};
        note("toast " + std::string(kNames[static_cast<std::size_t>(message)]) +
             (argument ? " " + std::to_string(*argument) : ""));
    }
    void dismiss() override {}
    void dismissCounting() override {}

    const Published<std::int64_t>& unconsumedPenaltySec() const override { return pool_; }
    std::int64_t consumePenalty() override { return 0; }
    void clearPenalty() override {}
    void expireIfStale() override {}
    std::int64_t previewPenalty(BreakKind) override { return 0; }
    std::int64_t registerSkip(BreakKind) override { return 0; }
    std::int64_t recentSkipCount() const override { return 0; }

    std::int64_t remainingPostpones() override { return 1; }
    bool tryPostpone() override { return true; }

    void append(const BreakLogEntry& entry) override { log.push_back(entry); }

    Events events_;
    Published<std::int64_t> pool_;
    bool breakSoonPosted_ = false;
    bool forgottenScheduled_ = false;
    SettingsStore settings_{preferences};
    SessionStateStore session_{preferences, runLoop.wallNow()};
    std::unique_ptr<TimerEngine> engine_;
    std::vector<Subscription> watching_;
};

// Without the warnings ahead of a break, for tests of something else.
inline void quiet(SettingsModel& settings) {
    settings.breakSoonLeadSec = 0;
    settings.preBreakToastLeadSec = 0;
}

}  // namespace ostrel
