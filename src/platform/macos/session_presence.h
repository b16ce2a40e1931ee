#pragma once

#include <set>

namespace ostrel {

// Whether the screens show this user's session, from what the system tells of each thing that can
// hide it.
//
// What is heard of last counts: whoever unlocks the screen has ended the screen saver, and whoever
// has switched back to this user has given the password, whether or not that was told as well.
class SessionPresence {
  public:
    enum class Cover { screensAsleep, screenSaver, lock, otherUser };

    void cover(Cover by) { covers_.insert(by); }
    void uncover(Cover by);

    [[nodiscard]] bool isOnScreen() const { return covers_.empty(); }
    [[nodiscard]] bool areScreensAsleep() const { return covers_.contains(Cover::screensAsleep); }

  private:
    std::set<Cover> covers_;
};

}  // namespace ostrel
