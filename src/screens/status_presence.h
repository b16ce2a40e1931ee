#pragma once

namespace ostrel {

// The program in the desktop's status area, or its menu alone where there is none.
class StatusPresence {
  public:
    virtual ~StatusPresence() = default;

    // Shows the menu where the pointer is.
    virtual void popUpMenu() = 0;

    // Says that settings could not be saved, as soon as there is an icon.
    virtual void tellNotSaved() = 0;
};

}  // namespace ostrel
