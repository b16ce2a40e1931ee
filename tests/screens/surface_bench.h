#pragma once

#include <QCoreApplication>

#include "screens/gui.h"
#include "screens/overlay_surface.h"
#include "screens/qt_overlay_window.h"
#include "screens/qt_overlay_window_maker.h"
#include "support/overlay_bench.h"

namespace ostrel {

// Breaks in windows on one display, where nothing fades.
struct SurfaceTest : ::testing::Test {
    SurfaceTest() {
        bench.displays().set({{1, {0, 0, 800, 600}}}, 1);
        bench.motion().setReduceMotion(true);
    }
    // The fixture's windows are deleted in a turn of the loop.
    ~SurfaceTest() override {
        bench.overlay().close(CloseReason::forcedBySleep);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    OverlaySurface& present(BreakKind kind, std::int64_t durationSec, std::int64_t penaltySec = 0) {
        bench.overlay().present(kind, durationSec, penaltySec);
        static_cast<void>(bench.take());
        auto& window = dynamic_cast<QtOverlayWindow&>(*bench.overlay().openWindows().front());
        // The manager gives the keyboard to a window that has painted.
        EXPECT_TRUE(runUntil([&window] { return window.surface().isActiveWindow(); }));
        return window.surface();
    }

    QtOverlayWindowMaker maker;
    OverlayBench bench{&maker};
};

}  // namespace ostrel
