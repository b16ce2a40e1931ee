#include "platform/linux/process_sound_library.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/linux/sound_server.h"
#include "platform/pulse/sound_file.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using Samples = SoundServer::Samples;

const fs::path kProgramFolder = OSTREL_PROGRAM_FOLDER;

struct ProcessSoundTest : ::testing::Test {
    SoundServer server;
    ProcessSoundLibrary library{kProgramFolder};
    std::unique_ptr<Sound> sound;
    Samples expected;

    void SetUp() override {
        if (!SoundServer::isInstalled()) {
            GTEST_SKIP() << "pulseaudio and parec are not installed";
        }
        ASSERT_TRUE(server.start());
        load("chime-start");
    }
    void load(const std::string& name) {
        const auto file = SoundFile::read(kProgramFolder / "sounds" / (name + ".aiff"));
        sound = library.load(name);
        ASSERT_TRUE(file && sound) << name;
        expected = file->samples;
    }

    // How many of the sound's samples are heard, the first that is not silent at `at`.
    std::size_t samplesHeard(std::size_t at) {
        const Samples& heard = server.heard();
        std::size_t same = 0;
        while (same < expected.size() && expected[same] == 0) {
            ++same;
        }
        for (; same < expected.size() && at < heard.size() && heard[at] == expected[same]; ++same) {
            ++at;
        }
        return same;
    }
    // Whether the sound is heard whole, and nothing else, behind `from`.
    bool isHeardWhole(std::size_t from) {
        const bool ended = runUntil([&] { return !sound->isPlaying(); });
        server.listen(0.15);
        const std::size_t first = server.firstSound(from);
        return ended && samplesHeard(first) == expected.size() &&
               !server.hears(first + expected.size());
    }
};

TEST_F(ProcessSoundTest, EachChimeIsHeardToTheLastSample) {
    for (const char* name : {"chime-start", "chime-end"}) {
        load(name);
        const std::size_t before = server.heard().size();
        sound->play();
        EXPECT_TRUE(isHeardWhole(before)) << name;
    }
}

TEST_F(ProcessSoundTest, APlayingSoundBeginsAnewAndIsNeverHeardOverItself) {
    sound->play();
    EXPECT_TRUE(sound->isPlaying());
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    server.listen(0.3);
    sound->play();  // goes on
    server.listen(0.1);
    sound->rewind();
    sound->play();
    ASSERT_TRUE(runUntil([&] { return !sound->isPlaying(); }));
    server.listen(0.15);

    const std::size_t first = server.firstSound();
    const std::size_t cut = samplesHeard(first);
    EXPECT_GT(cut, 0.3 * SoundServer::kRate);
    EXPECT_LT(cut, expected.size());
    EXPECT_TRUE(isHeardWhole(first + cut));
}

TEST_F(ProcessSoundTest, AServerThatDiesOrIsAwayCostsOnlyTheChimesMeanwhile) {
    sound->play();
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    EXPECT_TRUE(sound->isPlaying());
    server.die();
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }));
    sound->play();
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }));

    ASSERT_TRUE(server.start());
    sound->play();
    EXPECT_TRUE(isHeardWhole(0));
}

TEST_F(ProcessSoundTest, AChimeThatAHangingServerDoesNotTakeIsDroppedNotLate) {
    server.hang();
    sound->play();
    EXPECT_TRUE(sound->isPlaying());
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }, std::chrono::seconds(4)));
    server.recover();
    server.listen(0.3);
    EXPECT_FALSE(server.hears());
}

TEST_F(ProcessSoundTest, ASoundThatGoesTakesItsProcessAlong) {
    sound->play();
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    sound.reset();
    server.listen(0.1);
    const std::size_t after = server.heard().size();
    server.listen(0.2);
    EXPECT_FALSE(server.hears(after));
}

TEST(ProcessSoundLibraryTest, WhatIsMissingOrNoSoundIsSilence) {
    const TemporaryFolder folder;
    const fs::path programs = folder.path() / "bin";
    const fs::path sounds = folder.path() / "share/ostrel/sounds";
    const fs::path player = folder.path() / "libexec/ostrel/ostrel-play";
    for (const fs::path& made : {programs, sounds, player.parent_path()}) {
        fs::create_directories(made);
    }
    fs::copy_file(kProgramFolder / "sounds/chime-start.aiff", sounds / "chime-start.aiff");
    std::ofstream(sounds / "text.aiff") << "no sound, but a text";
    std::ofstream(sounds / "damaged.aiff") << "FORM....AIFF, and nothing that belongs there";
    EXPECT_FALSE(ProcessSoundLibrary(programs).load("chime-start")) << "without a player";
    fs::create_symlink(kProgramFolder / "ostrel-play", player);
    EXPECT_FALSE(ProcessSoundLibrary(programs).load("chime-end"));
    EXPECT_FALSE(ProcessSoundLibrary(programs).load("text"));
    // What is found out only when it plays.
    const auto damaged = ProcessSoundLibrary(programs).load("damaged");
    const auto playerless = ProcessSoundLibrary(programs).load("chime-start");
    ASSERT_TRUE(damaged && playerless);
    damaged->play();
    EXPECT_TRUE(runUntil([&] { return !damaged->isPlaying(); }));
    fs::remove(player);
    playerless->play();
    EXPECT_TRUE(runUntil([&] { return !playerless->isPlaying(); }));
}

}  // namespace
}  // namespace ostrel
