#include "platform/linux/process_sound_library.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "core/settings/settings_store.h"
#include "overlay/chime_player.h"
#include "platform/linux/sound_server.h"
#include "platform/pulse/sound_file.h"
#include "platform/virtual/memory_preferences.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using ChimeMode = SettingsModel::ChimeMode;
using Samples = SoundServer::Samples;

const fs::path kProgramFolder = OSTREL_PROGRAM_FOLDER;

Samples samplesOf(const char* name) {
    const auto sound = SoundFile::read(kProgramFolder / "sounds" / (std::string(name) + ".aiff"));
    EXPECT_TRUE(sound) << name;
    return sound ? sound->samples : Samples{};
}

// How many samples of `sound` are heard when the first that is not silent lies at `at`.
std::size_t sameSamples(const Samples& heard, std::size_t at, const Samples& sound) {
    std::size_t same = 0;
    while (same < sound.size() && sound[same] == 0) {
        ++same;
    }
    for (; same < sound.size() && at < heard.size() && heard[at] == sound[same]; ++same) {
        ++at;
    }
    return same;
}

struct ProcessSoundTest : ::testing::Test {
    SoundServer server;
    ProcessSoundLibrary library{kProgramFolder};
    const Samples start = samplesOf("chime-start");
    const Samples end = samplesOf("chime-end");

    void SetUp() override {
        if (!SoundServer::isInstalled()) {
            GTEST_SKIP() << "pulseaudio and parec are not installed";
        }
        ASSERT_TRUE(server.start());
    }

    // The name of the chime that is heard at or behind `from`, which is moved behind it.
    std::string nextChime(std::size_t& from) {
        const std::size_t at = server.firstSound(from);
        for (const auto& [name, sound] : {std::pair("start", &start), std::pair("end", &end)}) {
            if (sameSamples(server.heard(), at, *sound) == sound->size()) {
                from = at + sound->size();
                return name;
            }
        }
        from = server.heard().size();
        return at < from ? "something else" : "";
    }
    bool hearsToTheEnd(const Sound& sound) {
        const bool ended = runUntil([&] { return !sound.isPlaying(); });
        server.listen(0.15);
        return ended;
    }
};

TEST_F(ProcessSoundTest, ChimesAreHeardAsTheModeSaysAndNothingElseIs) {
    MemoryPreferences preferences;
    SettingsStore settings(preferences);
    ChimePlayer chimes(settings, library);
    const auto setMode = [&](ChimeMode mode) {
        settings.update([mode](SettingsModel& model) { model.chimeMode = mode; });
    };
    const auto wait = [&](const Samples& sound) {
        const std::size_t from = server.heard().size();
        EXPECT_TRUE(runUntil([&] { return server.hears(from); }));
        server.listen(static_cast<double>(sound.size()) / SoundServer::kRate + 0.15);
    };
    setMode(ChimeMode::off);
    chimes.playStart();
    chimes.playEnd();
    setMode(ChimeMode::end);
    chimes.playStart();
    chimes.playEnd();
    wait(end);
    setMode(ChimeMode::start);
    chimes.playEnd();
    chimes.playStart();
    wait(start);
    std::size_t from = 0;
    EXPECT_EQ(nextChime(from), "end");
    EXPECT_EQ(nextChime(from), "start");
    EXPECT_EQ(nextChime(from), "");
}

TEST_F(ProcessSoundTest, APlayingSoundBeginsAnewAndIsNeverHeardOverItself) {
    const auto sound = library.load("chime-start");
    ASSERT_TRUE(sound);
    EXPECT_FALSE(sound->isPlaying());
    sound->play();
    EXPECT_TRUE(sound->isPlaying());
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    server.listen(0.3);
    sound->play();  // goes on
    server.listen(0.1);
    sound->rewind();
    sound->play();
    EXPECT_TRUE(hearsToTheEnd(*sound));

    const std::size_t first = server.firstSound();
    const std::size_t cut = sameSamples(server.heard(), first, start);
    EXPECT_GT(cut, 0.3 * SoundServer::kRate);
    EXPECT_LT(cut, start.size());
    std::size_t from = first + cut;
    EXPECT_EQ(nextChime(from), "start");
    EXPECT_EQ(nextChime(from), "");
}

TEST_F(ProcessSoundTest, AServerThatDiesOrIsAwayCostsOnlyTheChimesMeanwhile) {
    const auto sound = library.load("chime-start");
    ASSERT_TRUE(sound);
    sound->play();
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    EXPECT_TRUE(sound->isPlaying());
    server.die();
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }));
    sound->play();
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }));

    ASSERT_TRUE(server.start());
    sound->play();
    EXPECT_TRUE(hearsToTheEnd(*sound));
    std::size_t from = 0;
    EXPECT_EQ(nextChime(from), "start");
}

TEST_F(ProcessSoundTest, AChimeThatAHangingServerDoesNotTakeIsDroppedNotLate) {
    const auto sound = library.load("chime-start");
    ASSERT_TRUE(sound);
    server.hang();
    sound->play();
    EXPECT_TRUE(sound->isPlaying());
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }, std::chrono::seconds(4)));
    server.recover();
    server.listen(0.3);
    EXPECT_FALSE(server.hears());
}

TEST_F(ProcessSoundTest, ASoundThatGoesTakesItsProcessAlong) {
    auto sound = library.load("chime-end");
    ASSERT_TRUE(sound);
    sound->play();
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    sound.reset();
    server.listen(0.1);
    const std::size_t after = server.heard().size();
    server.listen(0.2);
    EXPECT_FALSE(server.hears(after));
}

TEST(ProcessSoundLibraryTest, WhatIsMissingOrNoSoundIsNotLoaded) {
    const TemporaryFolder folder;
    const fs::path programs = folder.path() / "bin";
    const fs::path sounds = folder.path() / "share/ostrel/sounds";
    const fs::path player = folder.path() / "libexec/ostrel/ostrel-play";
    const auto isLoaded = [&](const char* name) {
        return ProcessSoundLibrary(programs).load(name) != nullptr;
    };
    for (const fs::path& made : {programs, sounds, player.parent_path()}) {
        fs::create_directories(made);
    }
    fs::copy_file(kProgramFolder / "sounds/chime-start.aiff", sounds / "chime-start.aiff");
    std::ofstream(sounds / "text.aiff") << "no sound, but a text";
    std::ofstream(sounds / "empty.aiff") << "";
    EXPECT_FALSE(isLoaded("chime-start")) << "without a player";
    std::ofstream(player) << "#!/bin/false\n";
    EXPECT_FALSE(isLoaded("chime-start")) << "with a player that may not be run";
    fs::permissions(player, fs::perms::owner_all);
    EXPECT_TRUE(isLoaded("chime-start"));
    for (const char* name : {"chime-end", "text", "empty", "../sounds"}) {
        EXPECT_FALSE(isLoaded(name)) << name;
    }

    // What is found out only when they play ends in silence.
    std::ofstream(sounds / "damaged.aiff") << "FORM....AIFF, and nothing that belongs there";
    const auto damaged = ProcessSoundLibrary(programs).load("damaged");
    const auto playerless = ProcessSoundLibrary(programs).load("chime-start");
    ASSERT_TRUE(damaged && playerless);
    fs::remove(player);
    playerless->play();
    EXPECT_TRUE(runUntil([&] { return !playerless->isPlaying(); }));
    fs::create_symlink(kProgramFolder / "ostrel-play", player);
    damaged->play();
    EXPECT_TRUE(runUntil([&] { return !damaged->isPlaying(); }));
}

}  // namespace
}  // namespace ostrel
