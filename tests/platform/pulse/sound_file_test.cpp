#include "platform/pulse/sound_file.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>
#include <string>

#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

using Samples = std::vector<std::int16_t>;

const std::filesystem::path kSounds = OSTREL_SOUNDS;

SoundFile shipped(const char* name) {
    const auto sound = SoundFile::read(kSounds / (std::string(name) + ".aiff"));
    EXPECT_TRUE(sound) << name;
    return sound.value_or(SoundFile{});
}

int loudest(Samples::const_iterator begin, Samples::const_iterator end) {
    int peak = 0;
    std::for_each(begin, end,
                  [&](std::int16_t sample) { peak = std::max(peak, std::abs(sample)); });
    return peak;
}

// How much of the frequency there is in a stretch of a second's tenth.
double amountOf(double hertz, const SoundFile& sound, double fromSec) {
    const auto begin = static_cast<std::size_t>(fromSec * sound.rate);
    double real = 0;
    double imaginary = 0;
    for (std::size_t i = 0; i < sound.rate / 10; ++i) {
        const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / sound.rate;
        real += sound.samples[begin + i] * std::cos(angle);
        imaginary += sound.samples[begin + i] * std::sin(angle);
    }
    return real * real + imaginary * imaginary;
}

double spectralCentre(const SoundFile& sound, double fromSec) {
    double sum = 0;
    double weighted = 0;
    for (double hertz = 100; hertz <= 3000; hertz += 10) {
        const double amount = amountOf(hertz, sound, fromSec);
        sum += amount;
        weighted += hertz * amount;
    }
    return weighted / sum;
}

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

TEST(SoundFileTest, TheChimesAreShortAndCalmAndBeginAndEndWithoutAClick) {
    for (const char* name : {"chime-start", "chime-end"}) {
        const SoundFile sound = shipped(name);
        EXPECT_EQ(sound.rate, 48000U) << name;
        EXPECT_EQ(sound.channels, 1) << name;
        EXPECT_GE(sound.lengthSec(), 0.6) << name;
        EXPECT_LE(sound.lengthSec(), 1.5) << name;

        const Samples& samples = sound.samples;
        const int peak = loudest(samples.begin(), samples.end());
        EXPECT_NEAR(20 * std::log10(peak / 32768.0), -9, 0.1) << name;
        EXPECT_LE(loudest(samples.begin(), samples.begin() + 48), peak / 100) << name;
        EXPECT_LE(loudest(samples.end() - 480, samples.end()), peak / 100) << name;
        int steepest = std::abs(samples.front());
        for (std::size_t i = 1; i < samples.size(); ++i) {
            steepest = std::max(steepest, std::abs(samples[i] - samples[i - 1]));
        }
        EXPECT_LE(steepest, peak / 6) << name << ", with nothing loud above 1.3 kHz";
    }
}

TEST(SoundFileTest, TheStartRisesAndTheEndFalls) {
    const SoundFile start = shipped("chime-start");
    const SoundFile end = shipped("chime-end");
    EXPECT_GT(spectralCentre(start, 0.5), spectralCentre(start, 0.05) * 1.15);
    EXPECT_LT(spectralCentre(end, 0.6), spectralCentre(end, 0.05) / 1.15);
    EXPECT_GT(amountOf(587, start, 0.5), 5 * amountOf(392, start, 0.5));
    EXPECT_GT(amountOf(392, end, 0.6), 5 * amountOf(587, end, 0.6));
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
    const std::pair<std::size_t, bool> lengths[] = {
        {0, false}, {1, true}, {100, true}, {101, false}};
    for (const auto& [frames, isRead] : lengths) {
        write(file, SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 10, 1, Samples(frames, 7));
        EXPECT_EQ(SoundFile::read(file).has_value(), isRead) << frames << " frames, ten a second";
    }
}

}  // namespace
}  // namespace ostrel
