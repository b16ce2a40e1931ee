// ostrel-play FILE: plays a short sound to its end on the user's sound server. Answers 0 when it
// was heard.
//
// A program of its own, started for each chime: the libraries that it takes, which stay once they
// are loaded, cost Ostrel nothing, and a sound server that hangs or dies concerns nobody else.

#include <unistd.h>

#include <cmath>
#include <cstdio>

#include "platform/pulse/pulse_player.h"
#include "platform/pulse/sound_file.h"

namespace {

// A chime that comes later than this is worse than none.
constexpr unsigned kBeginWithinSec = 2;
constexpr unsigned kFinishLateSec = 2;

int fail(const char* reason) {
    std::fprintf(stderr, "ostrel-play: %s\n", reason);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: ostrel-play FILE\n", stderr);
        return 2;
    }
    const auto sound = ostrel::SoundFile::read(argv[1]);
    if (!sound) {
        return fail("the file is not a sound that can be played");
    }
    // The signal ends the program where a server does not answer.
    alarm(kBeginWithinSec);
    ostrel::PulsePlayer player;
    if (!player.begin(*sound)) {
        return fail("no sound server takes the sound");
    }
    alarm(static_cast<unsigned>(std::ceil(sound->lengthSec())) + kFinishLateSec);
    return player.finish() ? 0 : fail("the sound server went away");
}
