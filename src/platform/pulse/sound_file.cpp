#include "platform/pulse/sound_file.h"

#include <sndfile.h>

#include <memory>

namespace ostrel {
namespace {

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

constexpr int kMostChannels = 8;
constexpr int kHighestRate = 192'000;

bool isPlayable(const SF_INFO& info) {
    return info.channels >= 1 && info.channels <= kMostChannels && info.samplerate >= 1 &&
           info.samplerate <= kHighestRate && info.frames >= 1 &&
           info.frames <= SoundFile::kLongestSec * info.samplerate;
}

}  // namespace

std::optional<SoundFile> SoundFile::read(const std::filesystem::path& file) {
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, CloseSound> source(sf_open(file.c_str(), SFM_READ, &info));
    if (!source || !isPlayable(info)) {
        return std::nullopt;
    }
    SoundFile sound{
        static_cast<std::uint32_t>(info.samplerate), static_cast<std::uint8_t>(info.channels), {}};
    sound.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    if (sf_readf_short(source.get(), sound.samples.data(), info.frames) != info.frames) {
        return std::nullopt;
    }
    return sound;
}

double SoundFile::lengthSec() const {
    return static_cast<double>(samples.size()) / channels / rate;
}

}  // namespace ostrel
