#pragma once

#include <memory>

#include "overlay/overlay_ports.h"
#include "platform/api/sound_player.h"

namespace ostrel {

class SettingsStore;

// Plays a sound when a break begins and another when its countdown ends, as the setting `chimeMode`
// says at that moment.
//
// A chime that is asked for again while it sounds begins anew; it is never heard over itself. One
// that cannot be loaded is never heard, and the other does not suffer.
class ChimePlayer : public ChimePlaying {
  public:
    // Loads both sounds, so that playing them costs nothing but the play. `sounds` is not kept.
    ChimePlayer(const SettingsStore& settingsStore, SoundLibrary& sounds);

    void playStart() override;
    void playEnd() override;

    // To hear them once, whatever the setting says.
    void tryStart();
    void tryEnd();

  private:
    const SettingsStore& settingsStore_;
    std::unique_ptr<Sound> startPlayer_;
    std::unique_ptr<Sound> endPlayer_;
};

}  // namespace ostrel
