#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/engine/timer_engine.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {

// An engine on a virtual run loop, which writes down all that leaves the engine as "SECOND what": a
// test names the whole of it.
class EngineBench : public RecordsBench,
                    MeetingPresenceGuarding,
                    BreakNotifying,
                    EngineToasts,
                    PostponeRation {
  public:
    bool meetingActive = false;
    bool overlayPresented = false;
    std::vector<std::function<void()>> meetingCompletions;

    using RecordsBench::RecordsBench;

    SessionStateStore& session() { return session_; }

    // Anew, with the same settings.
    TimerEngine& launch() {
        engine_.reset();
        engine_ = std::make_unique<TimerEngine>(
            TimerEngine::Services{settings,
                                  session_,
                                  calendar,
                                  runLoop,
                                  clock(),
                                  seededUuids(1),
                                  {nullptr, this, nullptr, this, nullptr, this, this}},
            TimerEngine::Ticking::automatic);
        engine_->setIsOverlayPresented([this] { return overlayPresented; });
        watch();
        engine_->configure(PresetCatalog::active(*settings.settings()));
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

    void finishMeetings() {
        meetingActive = false;
        for (auto& completion : std::exchange(meetingCompletions, {})) {
            completion();
        }
    }

    // What has happened since the last call.
    Events take() { return std::exchange(events_, {}); }

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
            [this](std::int64_t /*penalty*/) { note("open eye"); }));
        watching_.push_back(engine.shouldOpenBodyBreak.subscribe(
            [this](std::int64_t /*penalty*/) { note("open body"); }));
        watching_.push_back(engine.holdEnded.subscribe([this](BreakKind kind, HoldEnd how) {
            note("hold of " + std::string(nameOf(kind)) + " " + std::string(nameOf(how)));
        }));
    }

    bool isMeetingActive() const override { return meetingActive; }
    void waitUntilClear(std::function<void()> completion) override {
        meetingCompletions.push_back(std::move(completion));
    }

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

    std::int64_t remainingPostpones() override { return 1; }
    bool tryPostpone() override { return true; }

    Events events_;
    bool breakSoonPosted_ = false;
    bool forgottenScheduled_ = false;
    SessionStateStore session_{preferences, now()};
    std::unique_ptr<TimerEngine> engine_;
    std::vector<Subscription> watching_;
};

// Without the warnings ahead of a break, for tests of something else.
inline void quiet(SettingsModel& settings) {
    settings.breakSoonLeadSec = 0;
    settings.preBreakToastLeadSec = 0;
}

}  // namespace ostrel
