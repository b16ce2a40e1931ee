#pragma once

#include <memory>

namespace ostrel {

struct SoundFile;

// Plays one sound on the user's sound server: PulseAudio, or PipeWire in its place.
//
// Both steps block until they are done, for as long as the server takes; they answer false where
// there is no server or it goes away. None is started.
class PulsePlayer {
  public:
    PulsePlayer();
    PulsePlayer(const PulsePlayer&) = delete;
    PulsePlayer& operator=(const PulsePlayer&) = delete;
    ~PulsePlayer();

    // Until the server has the whole sound and begins with it.
    [[nodiscard]] bool begin(const SoundFile& sound);
    // Until it has been heard.
    [[nodiscard]] bool finish();

  private:
    struct Pulse;

    std::unique_ptr<Pulse> pulse_;
};

}  // namespace ostrel
