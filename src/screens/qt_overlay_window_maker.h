#pragma once

#include "overlay/overlay_window.h"

namespace ostrel {

// Makes overlay windows of Qt widgets. Needs a QApplication.
class QtOverlayWindowMaker : public OverlayWindowMaker {
  public:
    std::unique_ptr<OverlayWindow> make(OverlayManager& manager, BreakLogEntry::Kind kind,
                                        const ScreenSnapshot& screen, Role role) override;
};

}  // namespace ostrel
