#include "platform/macos/bundle_sounds.h"

#import <AVFoundation/AVFoundation.h>
#import <Foundation/Foundation.h>

#include "platform/macos/text.h"

namespace ostrel {
namespace {

class PlayerSound : public Sound {
  public:
    explicit PlayerSound(AVAudioPlayer* player) : player_(player) {}

    [[nodiscard]] bool isPlaying() const override { return player_.playing != NO; }
    void rewind() override { player_.currentTime = 0; }
    void play() override { [player_ play]; }

  private:
    AVAudioPlayer* player_;
};

}  // namespace

std::unique_ptr<Sound> BundleSounds::load(const std::string& name) {
    NSURL* place = [[NSBundle mainBundle] URLForResource:toNSString(name) withExtension:@"aiff"];
    if (!place) {
        return nullptr;
    }
    AVAudioPlayer* player = [[AVAudioPlayer alloc] initWithContentsOfURL:place error:nil];
    if (!player) {
        return nullptr;
    }
    [player prepareToPlay];
    return std::make_unique<PlayerSound>(player);
}

}  // namespace ostrel
