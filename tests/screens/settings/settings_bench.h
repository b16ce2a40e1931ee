#pragma once

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "base/uuid.h"
#include "platform/calendar/local_time.h"
#include "screens/settings/settings_services.h"

namespace ostrel {

// The services of the settings window over the virtual platform.
struct SettingsBench {
    VirtualPlatform platform{"UTC", wallTimeOf({{2026, 3, 2}, 10, 0, 0}, "UTC")};
    AppEnvironment environment{platform.platform(seededUuids(1))};
    std::vector<std::string> played;
    std::vector<PresetDefinition> planned;  // the days that were asked for
    std::vector<std::string> running{"org.example.Call", "org.gnome.Editor"};
    std::vector<Capability> capabilities{
        {Capability::Topic::away},
        {Capability::Topic::lock, Capability::State::partly, "capability.reason.locker"},
        {Capability::Topic::chimes, Capability::State::missing, "capability.reason.sound_server"}};

    SettingsBench() {
        environment.launch();
        environment.hotkeyRouter()->setActive(true);
    }

    SettingsStore& store() { return environment.settingsStore(); }
    const SettingsModel& settings() { return *store().settings(); }

    SettingsServices services() {
        return {store(),
                environment.timerEngine(),
                environment.overlayManager(),
                environment.hotkeyRouter(),
                [this](const SettingsModel& settings) {
                    planned.push_back(PresetCatalog::active(settings));
                    const PresetDefinition& day = planned.back();
                    return DayPlan{540,
                                   28'800,
                                   {{BreakKind::eye, day.eyeIntervalSec, day.eyeDurationSec},
                                    {BreakKind::body, day.bodyIntervalSec, day.bodyDurationSec}}};
                },
                [this](SettingsServices::Chime chime) {
                    played.emplace_back(chime == SettingsServices::Chime::start ? "start" : "end");
                },
                [this] { return running; },
                [](const std::string& program) {
                    return program.starts_with("org.example.") ? std::optional(program.substr(12))
                                                               : std::nullopt;
                },
                [this](QObject*, const SettingsServices::TellCapabilities& tell) {
                    tell(capabilities);
                },
                [](const QKeyEvent& press) { return std::optional(press.nativeScanCode()); },
                [] {},
                "/home/anna/.config/ostrel"};
    }
};

}  // namespace ostrel
