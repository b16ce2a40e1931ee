#include "platform/linux/x11_windows.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/screensaver.h>

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <algorithm>
#include <memory>
#include <vector>

#include "platform/linux/event_loop.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/x11_bench.h"
#include "platform/linux/x11_saver_suspensions.h"
#include "platform/linux/x11_screen_windows.h"

namespace ostrel {
namespace {

struct X11WindowsOnX11 : ::testing::Test {
    void SetUp() override {
        if (qtX11Connection() == nullptr || X11ScreenWindows().onScreen() == std::nullopt) {
            GTEST_SKIP() << "needs an X server in DISPLAY, and a window manager";
        }
    }

    // A program with a window of its own.
    static std::unique_ptr<QProcess> terminal(const QStringList& arguments) {
        auto process = std::make_unique<QProcess>();
        process->start("xterm", arguments + QStringList{"-e", "sleep 60"});
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }
    static void end(QProcess& process) {
        process.kill();
        process.waitForFinished();
    }
    static std::vector<ScreenWindows::Window> windowsOf(std::int64_t process) {
        std::vector<ScreenWindows::Window> windows =
            X11ScreenWindows().onScreen().value_or(std::vector<ScreenWindows::Window>());
        std::erase_if(
            windows, [process](const auto& window) { return window.processIdentifier != process; });
        return windows;
    }
    static void show(xcb_window_t window) {
        xcb_map_window(qtX11Connection(), window);
        xcb_flush(qtX11Connection());
    }
    static void destroy(xcb_window_t window) {
        xcb_destroy_window(qtX11Connection(), window);
        xcb_flush(qtX11Connection());
        ASSERT_TRUE(runUntil([&] { return windowsOf(getpid()).empty(); }));
    }
};

TEST_F(X11WindowsOnX11, AFullScreenWindowIsAsLargeAsItsDisplayWhateverTheScale) {
    const auto player = terminal({"-fullscreen"});
    const QtDisplays displays;
    const auto isLarge = [&] {
        const auto windows = windowsOf(player->processId());
        const auto all = displays.current();
        return windows.size() == 1 && std::ranges::any_of(all, [&](const auto& display) {
                   return windows[0].width == display.frame.width &&
                          windows[0].height == display.frame.height;
               });
    };
    EXPECT_TRUE(runUntil(isLarge));
    end(*player);
    EXPECT_TRUE(runUntil([&] { return windowsOf(player->processId()).empty(); }));
}

TEST_F(X11WindowsOnX11, AMinimisedWindowIsNotOnTheScreenNorOneOfAnotherWorkspace) {
    if (outputOf("xdotool", {"version"}).isEmpty()) {
        GTEST_SKIP() << "needs xdotool";
    }
    const auto program = terminal({});
    const auto isShown = [&] { return windowsOf(program->processId()).size() == 1; };
    ASSERT_TRUE(runUntil(isShown));
    const X11Windows windows;
    const auto isActive = [&] {
        const auto active = windows.active();
        return active && windows.processOf(*active) == program->processId();
    };
    ASSERT_TRUE(runUntil(isActive));
    const QString number = QString::number(*windows.active());
    const auto tool = [&](const char* what, const QStringList& more = {}) {
        outputOf("xdotool", QStringList{what, number} + more);
    };
    tool("windowminimize");
    EXPECT_TRUE(runUntil([&] { return !isShown(); }));
    tool("windowactivate");
    EXPECT_TRUE(runUntil(isShown));
    tool("set_desktop_for_window", {"1"});
    EXPECT_TRUE(runUntil([&] { return !isShown(); }));
    end(*program);
}

TEST_F(X11WindowsOnX11, TheDesktopsOwnWindowsAreLeftOutAndAProgramCannotLieAboutItsProcess) {
    const std::pair<const char*, std::size_t> types[] = {{"_NET_WM_WINDOW_TYPE_NORMAL", 1},
                                                         {"_NET_WM_WINDOW_TYPE_DOCK", 0},
                                                         {"_NET_WM_WINDOW_TYPE_DESKTOP", 0}};
    for (const auto& [type, expected] : types) {
        const xcb_window_t window = makeWindow({0, 0, 200, 100});
        setProperty(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {atom(type)});
        setProperty(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {2});
        show(window);
        // In the window manager's list, which tells that it has made up its mind.
        const QByteArray listed = "0x" + QByteArray::number(window, 16);
        ASSERT_TRUE(runUntil([&] {
            return outputOf("xprop", {"-root", "_NET_CLIENT_LIST_STACKING"}).contains(listed);
        })) << type;
        EXPECT_TRUE(runUntil([&, wanted = expected] {
            return windowsOf(getpid()).size() == wanted;
        })) << type;
        EXPECT_EQ(X11Windows().processOf(window), getpid());
        destroy(window);
    }
}

TEST_F(X11WindowsOnX11, AShadowThatAProgramDrawsIsNoPartOfItsWindow) {
    const xcb_window_t window = makeWindow({0, 0, 200, 100});
    show(window);
    ASSERT_TRUE(runUntil([&] { return windowsOf(getpid()).size() == 1; }));
    setProperty(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {10, 20, 5, 15});
    EXPECT_EQ(windowsOf(getpid()), (std::vector{ScreenWindows::Window{getpid(), 170, 80}}));
    setProperty(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL,
                std::vector<std::uint32_t>(4, 0xFFFFFFFF));
    EXPECT_EQ(windowsOf(getpid()), (std::vector{ScreenWindows::Window{getpid(), 200, 100}}));
    destroy(window);
}

TEST_F(X11WindowsOnX11, WhoeverSuspendsTheServersScreenSaverIsKnownUntilItResumesOrEnds) {
    const X11SaverSuspensions suspensions;
    const auto isKnown = [&] { return suspensions.processes().contains(getpid()); };
    EXPECT_FALSE(isKnown());
    xcb_connection_t* other = xcb_connect(nullptr, nullptr);
    xcb_screensaver_suspend(other, 1);
    xcb_flush(other);
    EXPECT_TRUE(runUntil(isKnown));
    xcb_disconnect(other);
    EXPECT_TRUE(runUntil([&] { return !isKnown(); }));
}

}  // namespace
}  // namespace ostrel
