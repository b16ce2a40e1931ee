#pragma once

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/simulator/virtual_platform.h"
#include "core/engine/timer_engine.h"
#include "core/settings/session_state_store.h"
#include "core/settings/settings_store.h"
#include "overlay/overlay_manager.h"
#include "records/daily_counter.h"
#include "support/events.h"

namespace ostrel {

// An overlay manager over the virtual platform, with an engine that does not tick and records that
// are its own, which writes down all that leaves the manager as "SECOND what".
class OverlayBench : BreakLogging,
                     DailyCounting,
                     SkipPenalties,
                     PostponeRation,
                     ChimePlaying,
                     GentleCardPresenting {
  public:
    // Without a maker of windows they are recorded, not drawn.
    explicit OverlayBench(OverlayWindowMaker* windows = nullptr)
        : platform_("UTC", WallTime{WallClock::duration{794'915'400}}),
          settings_(platform_.preferences),
          session_(platform_.preferences, now()),
          engine_({settings_,
                   session_,
                   platform_.calendar,
                   platform_.runLoop,
                   [this] { return now(); },
                   seededUuids(1),
                   {}},
                  TimerEngine::Ticking::manual),
          overlay_({platform_.preferences, settings_, engine_,
                    windows ? *windows : platform_.overlayWindows, platform_.displays,
                    platform_.systemEvents, platform_.motion, platform_.haptics,
                    platform_.inputIdle, platform_.runLoop, [this] { return now(); },
                    seededUuids(1), OverlayRecords{this, this, this, this, this, this}}) {
        engine_.configure(PresetCatalog::standard());
        watching_.push_back(platform_.haptics.played.subscribe([this](int) { note("tap"); }));
        watching_.push_back(overlay_.penaltyAppliedPublisher.subscribe(
            [this](std::int64_t seconds) { note("penalty " + std::to_string(seconds)); }));
        watching_.push_back(overlay_.didClose.subscribe([this](BreakKind kind, CloseReason reason) {
            note("close " + std::string(nameOf(kind)) + " " + std::string(nameOf(reason)));
        }));
    }

    std::int64_t postponesLeft = 1;
    GentleCard lastCard;
    std::function<void(OverlayAction)> pressCard;

    OverlayManager& overlay() { return overlay_; }
    TimerEngine& engine() { return engine_; }
    SettingsStore& settings() { return settings_; }
    SessionStateStore& session() { return session_; }
    RecordingWindows& windows() { return platform_.overlayWindows; }
    VirtualInputIdle& inputIdle() { return platform_.inputIdle; }
    VirtualDisplays& displays() { return platform_.displays; }
    VirtualMotionSettings& motion() { return platform_.motion; }
    SystemEvents& systemEvents() { return platform_.systemEvents; }
    // Of a counter beside the bench, which itself only notes what is counted.
    DailyCounter::Services counterServices() {
        return {platform_.preferences, platform_.calendar, platform_.runLoop,
                platform_.systemEvents, [this] { return now(); }};
    }
    [[nodiscard]] WallTime now() const { return platform_.runLoop.wallNow(); }

    void setUp(const std::function<void(SettingsModel&)>& change) { settings_.update(change); }
    void run(double seconds) {
        platform_.runLoop.runFor(
            std::chrono::round<RunLoopClock::duration>(std::chrono::duration<double>(seconds)));
    }
    Events take() { return std::exchange(events_, {}); }

  private:
    void note(const std::string& what) {
        const double second =
            static_cast<double>(platform_.runLoop.now().time_since_epoch().count()) / 1e9;
        events_.push_back(inShort(second) + " " + what);
    }
    static std::string inShort(double seconds) {
        char text[32];
        std::snprintf(text, sizeof text, "%g", seconds);
        return text;
    }

    void append(const BreakLogEntry& entry) override {
        note("log " + std::string(nameOf(entry.kind)) + " " + std::string(nameOf(entry.outcome)) +
             " " + std::to_string(entry.durationSec) + " +" +
             std::to_string(entry.penaltyAppliedSec) + " over " +
             inShort((entry.endedAt - entry.startedAt).count()));
    }
    void recordEyeCompleted() override { note("eye completed"); }
    void recordBodyCompleted() override { note("body completed"); }
    void recordSkip() override { note("skip counted"); }
    const Published<std::int64_t>& unconsumedPenaltySec() const override { return pool_; }
    std::int64_t consumePenalty() override { return 0; }
    void clearPenalty() override {}
    void expireIfStale() override {}
    std::int64_t previewPenalty(BreakKind) override { return 90; }
    std::int64_t registerSkip(BreakKind kind) override {
        note("skip of " + std::string(nameOf(kind)));
        return 0;
    }
    std::int64_t recentSkipCount() const override { return 2; }
    std::int64_t remainingPostpones() override { return postponesLeft; }
    bool tryPostpone() override { return postponesLeft > 0 && postponesLeft-- > 0; }
    std::string showCard(const GentleCard& card,
                         std::function<void(OverlayAction)> onPress) override {
        note("card");
        lastCard = card;
        pressCard = std::move(onPress);
        return "card";
    }
    void updateCard(const std::string& cardID, const GentleCard& card) override {
        EXPECT_EQ(cardID, "card");
        lastCard = card;
    }
    void dismissCard(const std::string& cardID) override {
        EXPECT_EQ(cardID, "card");
        note("no card");
        pressCard = nullptr;
    }
    void playStart() override { note("start chime"); }
    void playEnd() override { note("end chime"); }

    Events events_;
    Published<std::int64_t> pool_;
    VirtualPlatform platform_;
    SettingsStore settings_;
    SessionStateStore session_;
    TimerEngine engine_;
    OverlayManager overlay_;
    std::vector<Subscription> watching_;
};

}  // namespace ostrel
