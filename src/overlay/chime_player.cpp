#include "overlay/chime_player.h"

#include "core/settings/settings_store.h"

namespace ostrel {
namespace {

using ChimeMode = SettingsModel::ChimeMode;

void playFromBeginning(Sound* sound) {
    if (!sound) {
        return;
    }
    if (sound->isPlaying()) {
        sound->rewind();
    }
    sound->play();
}

}  // namespace

ChimePlayer::ChimePlayer(const SettingsStore& settingsStore, SoundLibrary& sounds)
    : settingsStore_(settingsStore),
      startPlayer_(sounds.load("chime-start")),
      endPlayer_(sounds.load("chime-end")) {}

void ChimePlayer::playStart() {
    const ChimeMode mode = settingsStore_.settings()->chimeMode;
    if (mode == ChimeMode::start || mode == ChimeMode::both) {
        tryStart();
    }
}

void ChimePlayer::playEnd() {
    const ChimeMode mode = settingsStore_.settings()->chimeMode;
    if (mode == ChimeMode::end || mode == ChimeMode::both) {
        tryEnd();
    }
}

void ChimePlayer::tryStart() {
    playFromBeginning(startPlayer_.get());
}

void ChimePlayer::tryEnd() {
    playFromBeginning(endPlayer_.get());
}

}  // namespace ostrel
