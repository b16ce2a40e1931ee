#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace ostrel {

// A short sound, decoded from a file of any type that libsndfile reads.
struct SoundFile {
    // More than a chime could want; what is longer is not read.
    static constexpr std::int64_t kLongestSec = 10;

    std::uint32_t rate = 0;  // frames a second
    std::uint8_t channels = 0;
    std::vector<std::int16_t> samples;  // the channels of a frame side by side

    // Absent when there is no such file, or no sound of up to kLongestSec can be decoded from it.
    [[nodiscard]] static std::optional<SoundFile> read(const std::filesystem::path& file);

    [[nodiscard]] double lengthSec() const;
};

}  // namespace ostrel
