#pragma once

#include <memory>
#include <string>
#include <utility>

#include "base/signal.h"
#include "platform/api/run_loop.h"
#include "platform/api/sound_player.h"

namespace ostrel {

// Sounds that nobody hears: told of instead, each as long as the real ones are at most.
class VirtualSounds : public SoundLibrary {
  public:
    explicit VirtualSounds(const RunLoop& runLoop) : runLoop_(runLoop) {}

    [[nodiscard]] std::unique_ptr<Sound> load(const std::string& name) override {
        return std::make_unique<VirtualSound>(*this, name);
    }

    // By name; `restarted` when it was still playing.
    enum class Beginning { fresh, restarted };
    Signal<const std::string&, Beginning> played;

  private:
    class VirtualSound : public Sound {
      public:
        VirtualSound(VirtualSounds& library, std::string name)
            : library_(library), name_(std::move(name)) {}

        [[nodiscard]] bool isPlaying() const override { return library_.runLoop_.now() < end_; }
        void rewind() override { wasRewound_ = true; }
        void play() override {
            constexpr RunLoopClock::duration kLength = std::chrono::milliseconds(1400);
            end_ = library_.runLoop_.now() + kLength;
            library_.played.send(
                name_, std::exchange(wasRewound_, false) ? Beginning::restarted : Beginning::fresh);
        }

      private:
        VirtualSounds& library_;
        std::string name_;
        bool wasRewound_ = false;
        RunLoopTime end_{};
    };

    const RunLoop& runLoop_;
};

}  // namespace ostrel
