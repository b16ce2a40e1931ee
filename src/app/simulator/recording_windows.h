#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "overlay/overlay_manager.h"
#include "overlay/overlay_window.h"

namespace ostrel {

// Overlay windows that nobody sees. They paint at once, unless told otherwise, and keep count of
// what is open and who has the keyboard.
class RecordingWindows : public OverlayWindowMaker {
  public:
    struct Window {
        std::uint32_t displayID = 0;
        Role role = Role::primary;
        Rect frame;
        bool isFading = false;
        bool hasKeyboard = false;
    };

    std::unique_ptr<OverlayWindow> make(OverlayManager& manager, BreakLogEntry::Kind kind,
                                        const ScreenSnapshot& screen, Role role) override;

    // Those on the screen, in the order in which they were made.
    [[nodiscard]] std::vector<Window> onScreen() const;
    [[nodiscard]] int madeCount() const { return made_; }

    enum class Painting { atOnce, onRequest };
    void setPainting(Painting painting) { painting_ = painting; }
    // Lets the window on that display paint for the first time.
    void paint(std::uint32_t displayID);

  private:
    class Recording;

    std::vector<Recording*> windows_;
    int made_ = 0;
    Painting painting_ = Painting::atOnce;
};

}  // namespace ostrel
