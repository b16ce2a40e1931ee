#include "screens/qt_overlay_window_maker.h"

#include "screens/qt_overlay_window.h"

namespace ostrel {

std::unique_ptr<OverlayWindow> QtOverlayWindowMaker::make(OverlayManager& manager,
                                                          BreakLogEntry::Kind kind,
                                                          const ScreenSnapshot& screen, Role role) {
    return std::make_unique<QtOverlayWindow>(manager, kind, screen, role);
}

}  // namespace ostrel
