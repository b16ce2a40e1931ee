#include "platform/macos/session_presence.h"

namespace ostrel {

void SessionPresence::uncover(Cover by) {
    covers_.erase(by);
    if (by == Cover::otherUser) {
        covers_.erase(Cover::lock);
    }
    if (by == Cover::otherUser || by == Cover::lock) {
        covers_.erase(Cover::screenSaver);
    }
}

}  // namespace ostrel
