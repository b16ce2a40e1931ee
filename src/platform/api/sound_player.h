#pragma once

#include <memory>
#include <string>

namespace ostrel {

// One short sound, decoded and ready to play.
class Sound {
  public:
    virtual ~Sound() = default;

    [[nodiscard]] virtual bool isPlaying() const = 0;
    // Back to the beginning; one that is playing goes on from there.
    virtual void rewind() = 0;
    // Begins to play, or goes on. Returns at once; without a way to be heard nothing happens.
    virtual void play() = 0;
};

// The sounds that come with the program.
class SoundLibrary {
  public:
    virtual ~SoundLibrary() = default;

    // By name without the type: "chime-start". Null when it is missing or cannot be decoded.
    [[nodiscard]] virtual std::unique_ptr<Sound> load(const std::string& name) = 0;
};

}  // namespace ostrel
