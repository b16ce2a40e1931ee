#pragma once

#include <filesystem>

#include "platform/api/sound_player.h"

namespace ostrel {

// Plays each sound in a process of its own, the program `ostrel-play`, which is there only while
// it sounds.
//
// The sound server's client library would stay for good once it is loaded, a megabyte that no other
// part of the program needs; and whatever the server does, hang or die, it does to that process.
class ProcessSoundLibrary : public SoundLibrary {
  public:
    // `programFolder` is the one of the running program. The sounds and the player lie in it, as in
    // a build folder, or where an installation puts them.
    explicit ProcessSoundLibrary(const std::filesystem::path& programFolder);

    // Looks no further than the beginning of the file: one that is damaged behind it is silent.
    [[nodiscard]] std::unique_ptr<Sound> load(const std::string& name) override;

  private:
    std::filesystem::path soundFolder_;
    std::filesystem::path player_;
};

}  // namespace ostrel
