#pragma once

#include "platform/api/sound_player.h"

namespace ostrel {

// The sounds in the Resources of the program's bundle, each decoded once and ready.
class BundleSounds : public SoundLibrary {
  public:
    [[nodiscard]] std::unique_ptr<Sound> load(const std::string& name) override;
};

}  // namespace ostrel
