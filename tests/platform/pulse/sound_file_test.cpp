#include "platform/pulse/sound_file.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <fstream>

#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

using Samples = std::vector<std::int16_t>;

void write(const std::filesystem::path& file, int format, int rate, int channels,
           const Samples& samples) {
    SF_INFO info{};
    info.format = format;
    info.samplerate = rate;
    info.channels = channels;
    SNDFILE* target = sf_open(file.c_str(), SFM_WRITE, &info);
    ASSERT_NE(target, nullptr) << file;
    sf_write_short(target, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(target);
}

TEST(SoundFileTest, FramesOfSeveralChannelsAndOtherTypesAreRead) {
    const TemporaryFolder folder;
    const Samples samples{0, 1000, -2000, 3000, 32767, -32768};
    for (const int type : {SF_FORMAT_AIFF, SF_FORMAT_WAV}) {
        write(folder.path() / "sound", type | SF_FORMAT_PCM_16, 1000, 2, samples);
        const auto sound = SoundFile::read(folder.path() / "sound");
        ASSERT_TRUE(sound) << type;
        EXPECT_EQ(sound->channels, 2);
        EXPECT_EQ(sound->samples, samples);
        EXPECT_DOUBLE_EQ(sound->lengthSec(), 0.003);
    }
}

TEST(SoundFileTest, WhatIsNoShortSoundIsAbsent) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "sound";
    EXPECT_FALSE(SoundFile::read(file));
    EXPECT_FALSE(SoundFile::read(folder.path()));
    for (const char* bytes : {"", "FORM", "FORM\0\0\0\4AIFF", "a text, and no sound at all"}) {
        std::ofstream(file) << bytes;
        EXPECT_FALSE(SoundFile::read(file)) << bytes;
    }
    for (const std::size_t frames : {0U, 1U, 100U, 101U}) {
        write(file, SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 10, 1, Samples(frames, 7));
        EXPECT_EQ(SoundFile::read(file).has_value(), frames == 1 || frames == 100)
            << frames << " frames, ten a second";
    }
}

}  // namespace
}  // namespace ostrel
