#include "overlay/chime_player.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "core/settings/settings_store.h"
#include "platform/virtual/memory_preferences.h"
#include "support/events.h"

namespace ostrel {
namespace {

// A library from which some sounds are missing, and which writes down those that are played.
struct IncompleteSounds : SoundLibrary {
    struct NotedSound : Sound {
        NotedSound(Events& events, std::string what) : played(events), name(std::move(what)) {}
        [[nodiscard]] bool isPlaying() const override { return false; }
        void rewind() override {}
        void play() override { played.push_back(name); }

        Events& played;
        std::string name;
    };

    [[nodiscard]] std::unique_ptr<Sound> load(const std::string& name) override {
        return missing.contains(name) ? nullptr : std::make_unique<NotedSound>(played, name);
    }

    std::set<std::string> missing;
    Events played;
};

TEST(ChimePlayerTest, AMissingSoundCostsOnlyItsOwnChime) {
    const std::pair<std::set<std::string>, Events> cases[] = {
        {{"chime-start"}, {"chime-end"}},
        {{"chime-end"}, {"chime-start"}},
        {{"chime-start", "chime-end"}, {}},
    };
    for (const auto& [missing, heard] : cases) {
        MemoryPreferences preferences;
        SettingsStore settings(preferences);
        IncompleteSounds sounds;
        sounds.missing = missing;
        ChimePlayer chimes(settings, sounds);
        chimes.playStart();
        chimes.playEnd();
        EXPECT_EQ(sounds.played, heard) << *missing.begin();
    }
}

}  // namespace
}  // namespace ostrel
