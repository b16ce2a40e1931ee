#include "overlay/chime_player.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <utility>

#include "core/settings/settings_store.h"
#include "platform/virtual/memory_preferences.h"
#include "support/events.h"

namespace ostrel {
namespace {

using ChimeMode = SettingsModel::ChimeMode;

// Sounds that write down what they are asked for, and play until they are told that they ended.
class ScriptedSounds : public SoundLibrary {
  public:
    [[nodiscard]] std::unique_ptr<Sound> load(const std::string& name) override {
        loads.push_back(name);
        return missing.contains(name) ? nullptr : std::make_unique<ScriptedSound>(*this, name);
    }

    [[nodiscard]] Events take() { return std::exchange(events_, {}); }

    std::set<std::string> missing;
    std::set<std::string> playing;
    Events loads;

  private:
    class ScriptedSound : public Sound {
      public:
        ScriptedSound(ScriptedSounds& library, std::string name)
            : library_(library), name_(std::move(name)) {}

        [[nodiscard]] bool isPlaying() const override { return library_.playing.contains(name_); }
        void rewind() override { library_.events_.push_back("rewind " + name_); }
        void play() override {
            library_.events_.push_back("play " + name_);
            library_.playing.insert(name_);
        }

      private:
        ScriptedSounds& library_;
        std::string name_;
    };

    Events events_;
};

struct ChimePlayerTest : ::testing::Test {
    void setMode(ChimeMode mode) {
        settings.update([mode](SettingsModel& model) { model.chimeMode = mode; });
    }
    // What a whole break is accompanied by, once its sounds have ended.
    Events chimesOfBreak() {
        chimes->playStart();
        sounds.playing.clear();
        chimes->playEnd();
        sounds.playing.clear();
        return sounds.take();
    }

    MemoryPreferences preferences;
    SettingsStore settings{preferences};
    ScriptedSounds sounds;
    std::optional<ChimePlayer> chimes{std::in_place, settings, sounds};
};

TEST_F(ChimePlayerTest, TheModeAtEachChimeDecidesWhetherItIsHeard) {
    const std::pair<ChimeMode, Events> cases[] = {
        {ChimeMode::both, {"play chime-start", "play chime-end"}},
        {ChimeMode::off, {}},
        {ChimeMode::start, {"play chime-start"}},
        {ChimeMode::end, {"play chime-end"}},
        {ChimeMode::both, {"play chime-start", "play chime-end"}},
    };
    for (const auto& [mode, heard] : cases) {
        setMode(mode);
        EXPECT_EQ(chimesOfBreak(), heard) << static_cast<int>(mode);
    }
    EXPECT_EQ(sounds.loads, (Events{"chime-start", "chime-end"})) << "loaded once, beforehand";
}

TEST_F(ChimePlayerTest, AChimeThatStillSoundsBeginsAnewAndLeavesTheOtherAlone) {
    chimes->playStart();
    chimes->playEnd();
    chimes->playStart();
    EXPECT_EQ(sounds.take(), (Events{"play chime-start", "play chime-end", "rewind chime-start",
                                     "play chime-start"}));
    sounds.playing.clear();
    chimes->playStart();
    EXPECT_EQ(sounds.take(), Events{"play chime-start"});
}

TEST_F(ChimePlayerTest, AModeOfSilenceLeavesASoundingChimeToItsEnd) {
    chimes->playStart();
    setMode(ChimeMode::off);
    chimes->playStart();
    EXPECT_EQ(sounds.take(), Events{"play chime-start"});
}

TEST_F(ChimePlayerTest, AMissingSoundCostsOnlyItsOwnChime) {
    const std::pair<std::set<std::string>, Events> cases[] = {
        {{"chime-start"}, {"play chime-end"}},
        {{"chime-end"}, {"play chime-start"}},
        {{"chime-start", "chime-end"}, {}},
    };
    for (const auto& [missing, heard] : cases) {
        sounds.missing = missing;
        chimes.emplace(settings, sounds);
        EXPECT_EQ(chimesOfBreak(), heard) << *missing.begin();
    }
}

}  // namespace
}  // namespace ostrel
