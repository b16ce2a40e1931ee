#include <gtest/gtest.h>

#include <initializer_list>
#include <iterator>
#include <random>

#include "platform/calendar/local_time.h"
#include "support/audited_schedule.h"
#include "support/random_runs.h"

namespace ostrel {
namespace {

// The same for a seed with every library, unlike the distributions of the standard one.
class RandomChoices {
  public:
    explicit RandomChoices(std::uint64_t seed) : random_(seed) {}

    std::int64_t below(std::int64_t count) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(count));
    }
    std::int64_t between(std::int64_t least, std::int64_t most) {
        return least + below(most - least + 1);
    }
    bool oneIn(std::int64_t count) { return below(count) == 0; }
    template <class T>
    T oneOf(std::initializer_list<T> values) {
        return values.begin()[below(std::ssize(values))];
    }

  private:
    std::mt19937_64 random_;
};

std::string anyZone(RandomChoices& any) {
    return any.oneOf({"UTC", "Europe/Berlin", "America/New_York", "Asia/Kolkata", "Africa/Cairo"});
}

// A quarter off the full seconds, at which the hours begin and end.
WallTime anyStart(RandomChoices& any) {
    const WallTime first = wallTimeOf({{2026, 3, 27}, 0, 0, 0}, "UTC");
    constexpr std::int64_t kThreeDaysSec = 259'200;
    return first + wallSec(any.below(kThreeDaysSec)) + WallClock::duration{0.25};
}

PresetDefinition anyPreset(RandomChoices& any) {
    return {"own",
            "Own",
            any.between(200, 900),
            any.between(20, 120),
            any.between(500, 2000),
            any.between(30, 300)};
}

void changeSome(SettingsModel& s, RandomChoices& any) {
    const auto maybe = [&any]<class T>(T& value,
                                       std::initializer_list<std::type_identity_t<T>> others) {
        value = any.oneIn(4) ? any.oneOf(others) : value;
    };
    maybe(s.detectUserIdle, {true, true, false});
    maybe(s.detectVideoPlayback, {true, false});
    maybe(s.delayBreakOnFullscreenVideo, {true, true, false});
    maybe(s.pauseDuringDND, {true, true, false});
    maybe(s.idleThresholdSec, {10, 60, 120, 300});
    maybe(s.creditAwayAsBreak, {true, true, false});
    maybe(s.deferAppBundleIDs, {{"us.zoom.xos"}, {"film"}, {}, {"call", "us.zoom.xos"}});
    maybe(s.maxDeferralSec, {0, 10, 90, 300, 1800});
    maybe(s.mergeNearbyBreaks, {true, false});
    maybe(s.workHoursEnabled, {true, false});
    maybe(s.workHoursStartMinute, {0, 540, any.below(1440)});
    const std::int64_t start = s.workHoursStartMinute;
    maybe(s.workHoursEndMinute, {start, (start + any.between(20, 300)) % 1440, any.below(1440)});
    maybe(s.workDays, {{1, 2, 3, 4, 5, 6, 7}, {2, 3, 4, 5, 6}, {1, 7}, {6}, {}});
}

SettingsModel anySettings(RandomChoices& any) {
    SettingsModel settings;
    PresetCatalog::writeInto(settings, anyPreset(any));
    settings.disableSkipPenalty = any.oneIn(2);
    for (int i = 0; i < 4; ++i) {
        changeSome(settings, any);
    }
    return settings;
}

// A day of somebody who skips and postpones, calls, watches films, comes and goes, pauses, sleeps
// and travels.
class RandomDay : private RandomChoices, private AuditedSchedule {
  public:
    RandomDay(const RandomChoices& choices, const SettingsModel& settings, Counts& counts)
        : RandomChoices(choices),
          AuditedSchedule(anyZone(*this), anyStart(*this), settings, counts) {}

    // What was wrong first, empty if nothing was.
    std::string live() {
        const RunLoopTime end = runLoopNow() + std::chrono::minutes(between(120, 300));
        while (runLoopNow() < end && fault().empty()) {
            if (session() && oneIn(3)) {
                pressAnything();
            } else if (session()) {
                run(between(1, 500));
            }
            // At that instant itself it may have ended or not.
            if (presence().isPauseEnding()) {
                run(1);
            }
            getGoing();
            act();
        }
        endEveryCause();
        return fault();
    }

  private:
    using App = std::optional<FrontmostApplication::Application>;

    // Nothing that stops the schedule lasts for ever.
    void getGoing() {
        if (!settings().ostrelEnabled && oneIn(2)) {
            change("schedule on", [](SettingsModel& s) { s.ostrelEnabled = true; });
        }
        if (presence().isPaused() && oneIn(4)) {
            oneIn(2) ? resume() : toggle();
        }
        if (presence().isFocusOn() && oneIn(4)) {
            announce();
        }
    }
    void endEveryCause() {
        resume();
        change("no hours, no focus", [](SettingsModel& s) {
            s.workHoursEnabled = false;
            s.pauseDuringDND = false;
        });
        run(3);
        findings().expect("pause left over", isPaused(), false);
    }

    void changeSettings() {
        SettingsModel next = settings();
        changeSome(next, *this);
        change("settings", [&next](SettingsModel& settings) { settings = next; });
    }
    void switchOff() {
        change("schedule off", [](SettingsModel& s) { s.ostrelEnabled = false; });
    }
    void choosePreset() { applyPreset(anyPreset(*this)); }

    void wait() {
        const bool isHeld = audit().countdowns().heldKind().has_value();
        run(isHeld || oneIn(2) ? between(1, 90) : between(60, 1200));
    }
    void pressAnything() {
        if (session() && oneIn(8)) {
            skipGently();
        } else {
            press(oneOf({OverlayAction::skip, OverlayAction::postpone, OverlayAction::done}));
        }
    }
    void waitForTheEnd() {
        run(session() ? session()->remainingSec : 0);
        oneIn(2) ? press(OverlayAction::done) : run(between(1, 5));
    }
    void togglePenalties() {
        change("penalties on or off",
               [](SettingsModel& s) { s.disableSkipPenalty = !s.disableSkipPenalty; });
    }
    void postponeNext() { postponeAhead(nextKind()); }
    void startOne() { startNow(oneOf({BreakKind::body, BreakKind::eye})); }
    void sleepOn() { sleep(oneOf<std::int64_t>({between(1, 900), 3600, between(3601, 40'000)})); }
    void startAgain() { relaunch(static_cast<double>(between(0, 15'000)) / 2); }

    void pauseTimed() { pause(between(1, 60)); }
    void endPause() { resume(); }
    // Ends every pause, or begins one.
    void toggle() {
        note("toggle chord");
        presence().isPaused() ? presence().endAllPauses() : presence().pause(std::nullopt);
        const HotkeyChord chord = settings().togglePauseHotkey;
        platform().hotkeys.press(chord.keyCode, chord.modifiers);
        check();
    }

    void changeFront() {
        const App front = oneOf<App>({App(), App({"us.zoom.xos", 4711}), App({"us.zoom.xos", 4711}),
                                      App({"us.zoom.xos.beta", 4711}), App({"film", 900}),
                                      App({"film", 900}), App({std::nullopt, 77})});
        note("in front " + (front ? front->bundleIdentifier.value_or("?") : "nothing"));
        platform().frontmost.set(front);
        presence().surroundingsChanged();
    }
    // Between two looks at what is in front.
    void changeFrontBeforeBodyBreak() {
        if (audit().countdowns().heldKind() == BreakKind::eye) {
            run(audit().countdowns().remainingSec(BreakKind::body) - between(1, 30));
            changeFront();
        }
    }
    // Around what covers the display, and what does not.
    void changeScreen() {
        note("windows");
        const ScreenWindows::Window window{oneOf<std::int64_t>({900, 900, 900, 77}),
                                           oneOf<double>({1824, 1920, 2432, 1823}),
                                           oneOf<double>({1026, 1026, 1440, 1368, 1025})};
        platform().windows.set({{4711, std::nullopt, 9999}, window});
        const char* type = oneOf({"PreventUserIdleDisplaySleep", "NoDisplaySleepAssertion",
                                  "PreventUserIdleSystemSleep"});
        platform().assertions.set(
            {{oneOf<std::int64_t>({900, 900, 900, 77}), {std::nullopt, type}}});
    }
    void changeIdle() {
        note("input");
        const auto idleSec = oneOf<double>({0, 0, 29.9, 30, 60, 119.5, 300.5, 43'200.4, 43'200.5});
        const auto leave = [this, since = passed()] { return inSeconds(passed() - since); };
        const std::function<std::optional<double>()> reading = [idleSec] { return idleSec; };
        platform().inputIdle.setReading(oneIn(2) ? leave : reading);
    }
    void announce() {
        const bool isOn = oneIn(2);
        note(isOn ? "Do Not Disturb on" : "Do Not Disturb off");
        presence().announce(isOn);
        using Value = DistributedAnnouncements::Value;
        const auto value =
            oneOf<Value>({isOn, std::int64_t{isOn ? 2 : 0}, std::string(isOn ? "TRUE" : "yes")});
        platform().announcements.announced.send(
            {oneOf({"com.apple.controlcenter.DoNotDisturbActive",
                    "com.apple.donotdisturb.notification"}),
             {{oneOf({"active", "state", "isActive"}), value}, {"DoNotDisturb", !isOn}}});
        check();
    }

    // Never back into a day whose counts are gone. Without penalties: nobody can tell how old a
    // skip is then.
    void setClock() {
        const WallTime to = now() + wallSec(oneOf({between(-5400, 5400), between(-90, 90)}));
        const Calendar& calendar = platform().calendar;
        if (settings().disableSkipPenalty && calendar.dayKeyOf(to) >= calendar.dayKeyOf(now())) {
            note("clock set");
            platform().runLoop.shiftWallClock(to - now());
            tellOfClock();
        }
    }
    void travel() {
        std::string zone = anyZone(*this);
        const ZonedCalendar there([&zone] { return zone; });
        if (there.dayKeyOf(now()) >= platform().calendar.dayKeyOf(now())) {
            note("zone " + zone);
            platform().timeZone = zone;
            tellOfClock();
        }
    }
    void tellOfClock() {
        presence().lookAtClock();
        platform().systemEvents.clockChanged.send();
        platform().runLoop.runOverdueWallTimers();
        check();
    }
    void becomeActive() {
        note("became active");
        presence().lookAtClock();
        platform().systemEvents.didBecomeActive.send();
        check();
    }

    struct Action {
        std::int64_t weight;
        void (RandomDay::*act)();
    };
    void act() {
        using Day = RandomDay;
        static constexpr Action kActions[] = {
            {60, &Day::wait},          {6, &Day::pressAnything},
            {6, &Day::waitForTheEnd},  {4, &Day::startOne},
            {4, &Day::postponeNext},   {3, &Day::pauseTimed},
            {5, &Day::toggle},         {3, &Day::endPause},
            {4, &Day::sleepOn},        {3, &Day::startAgain},
            {2, &Day::choosePreset},   {3, &Day::togglePenalties},
            {20, &Day::changeFront},   {12, &Day::changeScreen},
            {9, &Day::changeIdle},     {8, &Day::announce},
            {6, &Day::setClock},       {3, &Day::travel},
            {4, &Day::becomeActive},   {1, &Day::switchOff},
            {6, &Day::changeSettings}, {8, &Day::changeFrontBeforeBodyBreak}};
        std::int64_t total = 0;
        for (const Action& action : kActions) {
            total += action.weight;
        }
        const Action* chosen = kActions;
        for (std::int64_t drawn = below(total); drawn >= chosen->weight; ++chosen) {
            drawn -= chosen->weight;
        }
        (this->*chosen->act)();
    }
};

}  // namespace

TEST(RandomDayTest, BreaksComeWhereNothingIsInTheirWayAndCostAndCountWhatTheRulesSay) {
    const std::vector<std::string> happens = {"body break credited",
                                              "body closed forcedByPause",
                                              "started in a pause",
                                              "penalty carried",
                                              "eye break credited",
                                              "eye closed done",
                                              "eye closed forcedByPause",
                                              "hold for a call",
                                              "hold for a film",
                                              "hold of body cancelled",
                                              "hold of body dropped",
                                              "hold of body opened",
                                              "hold of eye cancelled",
                                              "hold of eye dropped",
                                              "hold of eye folded",
                                              "hold of eye opened",
                                              "merge undone",
                                              "merge credited",
                                              "pause kept at launch",
                                              "no postpone left",
                                              "return without credit",
                                              "sample during a film",
                                              "skip of eye for 180",
                                              "timed pause ended",
                                              "work began"};
    runSeeds({100, 2000, 100, happens}, [](std::uint64_t seed, Counts& counts) {
        RandomChoices any(seed);
        const SettingsModel settings = anySettings(any);
        return RandomDay(any, settings, counts).live();
    });
}

}  // namespace ostrel
