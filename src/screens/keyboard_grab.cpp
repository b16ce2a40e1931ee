#include "screens/keyboard_grab.h"

#include <utility>

namespace ostrel {

KeyboardGrab::KeyboardGrab(SetGrabbed setGrabbed) : setGrabbed_(std::move(setGrabbed)) {
    retry_.setInterval(kRetryMs);
    retry_.callOnTimeout([this] { attempt(); });
}

void KeyboardGrab::take() {
    if (!isHeld_) {
        retry_.start();
        attempt();
    }
}

void KeyboardGrab::attempt() {
    isHeld_ = setGrabbed_(true);
    if (isHeld_) {
        retry_.stop();
    }
}

void KeyboardGrab::release() {
    retry_.stop();
    if (std::exchange(isHeld_, false)) {
        setGrabbed_(false);
    }
}

}  // namespace ostrel
