#include "screens/keyboard_grab.h"

#include <utility>

namespace ostrel {

KeyboardGrab::KeyboardGrab(SetGrabbed setGrabbed) : setGrabbed_(std::move(setGrabbed)) {
    retry_.setInterval(kRetryMs);
    retry_.callOnTimeout([this] { attempt(); });
}

void KeyboardGrab::take() {
    if (!std::exchange(isWanted_, true)) {
        retry_.start();
        attempt();
    }
}

void KeyboardGrab::attempt() {
    if (setGrabbed_(true)) {
        retry_.stop();
    }
}

void KeyboardGrab::release() {
    retry_.stop();
    if (std::exchange(isWanted_, false)) {
        setGrabbed_(false);
    }
}

}  // namespace ostrel
