#include <gtest/gtest.h>
#include <xcb/screensaver.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <chrono>
#include <string_view>

#include "platform/linux/event_loop.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/x11_bench.h"
#include "platform/linux/x11_input_idle.h"

namespace ostrel {
namespace {

using Clock = std::chrono::steady_clock;
using Display = Displays::Display;
using std::chrono::milliseconds;

struct X11InputIdleOnX11 : ::testing::Test {
    void SetUp() override {
        if (qtX11Connection() == nullptr) {
            GTEST_SKIP() << "needs an X server in DISPLAY";
        }
        ASSERT_TRUE(runUntil([&] { return idleSec() >= 0.3; }));
    }
    static void press() { ASSERT_EQ(QProcess::execute("xdotool", {"key", "Shift_L"}), 0); }
    // The server has done it when it returns.
    static void request(xcb_void_cookie_t cookie) {
        EXPECT_EQ(xcb_request_check(qtX11Connection(), cookie), nullptr);
    }
    static double since(Clock::time_point time) {
        return std::chrono::duration<double>(Clock::now() - time).count();
    }
    [[nodiscard]] double idleSec() const {
        const auto answer = idle_.secondsSinceLastInput();
        EXPECT_TRUE(answer);
        return answer.value_or(-1);
    }

  private:
    X11InputIdle idle_;
};

TEST_F(X11InputIdleOnX11, GrowsUntilTheNextInputWhateverPlaysMeanwhileAlsoWhereAResetHidesIt) {
    const struct {
        std::string_view events;  // i: input, r: a reset, s: suspended and not any more
        bool turns = true;        // the loop, after each of them
    } cases[] = {{"rr", true},  {"s", true},  {"ir", true}, {"ir", false},
                 {"rir", true}, {"is", true}, {"ri", false}};
    xcb_connection_t* x = qtX11Connection();
    for (const auto& [events, turns] : cases) {
        ASSERT_TRUE(runUntil([&] { return idleSec() >= 0.3; }));
        Clock::time_point before = Clock::now();
        const milliseconds idle(static_cast<int>(idleSec() * 1000));
        Clock::time_point after = Clock::now() - idle;
        before -= idle;
        for (const char event : events) {
            if (event == 'i') {
                before = Clock::now();
                press();
                after = Clock::now();
            } else if (event == 'r') {
                request(xcb_force_screen_saver_checked(x, XCB_SCREEN_SAVER_RESET));
            } else {
                request(xcb_screensaver_suspend_checked(x, 1));
                request(xcb_screensaver_suspend_checked(x, 0));
            }
            if (turns) {
                runFor(milliseconds(100));
            }
        }
        const double afterwardsSec = idleSec();
        EXPECT_GE(afterwardsSec, since(after) - 0.005) << events;
        EXPECT_LE(afterwardsSec, since(before) + 0.005) << events;
    }
}

// Plugs monitors in and out of an Xvfb server, whose only output is named "screen": never touches
// the monitors of a real desktop.
struct QtDisplaysOnX11 : ::testing::Test {
    void SetUp() override {
        if (qtX11Connection() == nullptr || !xrandr({"--listmonitors"}).contains("screen\n")) {
            GTEST_SKIP() << "needs an Xvfb server of 3200x1080 in DISPLAY, and xrandr";
        }
        xrandr({"--setmonitor", "LEFT", "1920/508x1080/286+0+0", "screen"});
        xrandr({"--setmonitor", "RIGHT", "1280/338x1024/270+1920+0", "none"});
        ASSERT_TRUE(runUntil([&] { return QGuiApplication::screens().size() == 2; }));
    }
    void TearDown() override {
        xrandr({"--delmonitor", "RIGHT"});
        xrandr({"--delmonitor", "LEFT"});
        xrandr({"--output", "screen", "--auto"});
    }

    static QByteArray xrandr(const QStringList& arguments) { return outputOf("xrandr", arguments); }

    static std::uint32_t displayAt(const QtDisplays& displays, double x) {
        for (const Display& display : displays.current()) {
            if (display.frame.x == x) {
                return display.displayID;
            }
        }
        return 0;
    }
    static void putPointer(int x, int y) {
        QCursor::setPos(x, y);
        ASSERT_TRUE(runUntil([&] { return QCursor::pos() == QPoint(x, y); }));
    }
};

TEST_F(QtDisplaysOnX11, TheMainDisplayHasTheActiveWindowElseThePointer) {
    const QtDisplays displays;
    const std::uint32_t left = displayAt(displays, 0);
    const std::uint32_t right = displayAt(displays, 1920);
    putPointer(2000, 100);
    EXPECT_EQ(displays.mainDisplayID(), right);
    putPointer(100, 100);
    EXPECT_EQ(displays.mainDisplayID(), left);

    const xcb_window_t window = makeWindow({1540, 50, 800, 600});
    // Else a window manager would move it later, when it finds the time.
    const std::uint32_t pastTheWindowManager = 1;
    xcb_change_window_attributes(qtX11Connection(), window, XCB_CW_OVERRIDE_REDIRECT,
                                 &pastTheWindowManager);
    const std::pair<xcb_window_t, std::uint32_t> cases[] = {
        {window, right},  // 420 of its 800 columns are there
        {XCB_WINDOW_NONE, left},
        {window + 1, left}};  // it is gone
    for (const auto& [active, display] : cases) {
        setProperty(rootWindow(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {active});
        EXPECT_EQ(displays.mainDisplayID(), display);
    }
    xcb_delete_property(qtX11Connection(), rootWindow(), atom("_NET_ACTIVE_WINDOW"));
    xcb_destroy_window(qtX11Connection(), window);
}

TEST_F(QtDisplaysOnX11, LosingEveryMonitorAndGettingOneBackIsSurvived) {
    const QtDisplays displays;
    xrandr({"--delmonitor", "RIGHT"});
    xrandr({"--delmonitor", "LEFT"});
    // Qt's placeholder lives only for the moment in which the monitor is back.
    bool hasPlaceholder = false;
    const auto watch = QObject::connect(qGuiApp, &QGuiApplication::screenAdded, [&] {
        for (const QScreen* screen : QGuiApplication::screens()) {
            hasPlaceholder = hasPlaceholder || screen->name().startsWith(u':');
        }
        EXPECT_EQ(displays.current().size(), 1U);
    });
    for (int round = 0; round < 3; ++round) {
        xrandr({"--output", "screen", "--off", "--fb", "1280x720"});
        runFor(milliseconds(50));
        static_cast<void>(displays.mainDisplayID());
        xrandr({"--output", "screen", "--auto"});
        ASSERT_TRUE(runUntil([&] {
            const auto all = displays.current();
            return all.size() == 1 && all[0].frame.width == 3200;
        }));
    }
    QObject::disconnect(watch);
    EXPECT_TRUE(hasPlaceholder);
}

}  // namespace
}  // namespace ostrel
