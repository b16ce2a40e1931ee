#include <gtest/gtest.h>
#include <xcb/screensaver.h>
#include <xcb/xcb.h>

#include <QCursor>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <string_view>
#include <vector>

#include "platform/linux/event_loop.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/x11_input_idle.h"
#include "platform/linux/x11_input_watch.h"

namespace ostrel {
namespace {

using Clock = std::chrono::steady_clock;
using Display = Displays::Display;
using std::chrono::milliseconds;

xcb_connection_t* qtConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

xcb_window_t rootWindow() {
    return xcb_setup_roots_iterator(xcb_get_setup(qtConnection())).data->root;
}

TEST(QtDisplaysTest, ManyChangesInOneTurnAreToldOnceAndInTheNext) {
    const QtDisplays displays;
    ASSERT_FALSE(displays.current().empty());
    int told = 0;
    const Subscription watch = displays.changed.subscribe([&] { ++told; });
    QScreen* screen = QGuiApplication::primaryScreen();
    for (int i = 0; i < 3; ++i) {
        Q_EMIT screen->geometryChanged(screen->geometry());
        Q_EMIT qGuiApp->primaryScreenChanged(screen);
    }
    EXPECT_EQ(told, 0);
    ASSERT_TRUE(runUntil([&] { return told > 0; }));
    runFor(std::chrono::milliseconds(20));
    EXPECT_EQ(told, 1);
}

TEST(QtDisplaysTest, EveryDisplayLeadsToItsScreen) {
    const QtDisplays displays;
    for (const Display& display : displays.current()) {
        const QScreen* screen = displays.screen(display.displayID);
        ASSERT_NE(screen, nullptr);
        EXPECT_EQ(
            QRectF(display.frame.x, display.frame.y, display.frame.width, display.frame.height),
            QRectF(screen->geometry()));
    }
    const auto main = displays.mainDisplayID();
    ASSERT_TRUE(main);
    EXPECT_NE(displays.screen(*main), nullptr);
    EXPECT_EQ(displays.screen(9999), nullptr);
}

TEST(X11InputIdleTest, WithoutXItCannotBeTold) {
    if (qtConnection() != nullptr) {
        GTEST_SKIP() << "runs on X11";
    }
    EXPECT_EQ(X11InputIdle().secondsSinceLastInput(), std::nullopt);
}

struct X11InputIdleOnX11 : ::testing::Test {
    void SetUp() override {
        if (qtConnection() == nullptr) {
            GTEST_SKIP() << "needs an X server in DISPLAY";
        }
        ASSERT_TRUE(runUntil([&] { return idleSec() >= 0.3; }));
    }
    static void press() {
        ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                                    {QStringLiteral("key"), QStringLiteral("Shift_L")}),
                  0);
    }
    // The server has done it when it returns.
    static void reset() {
        EXPECT_EQ(xcb_request_check(qtConnection(), xcb_force_screen_saver_checked(
                                                        qtConnection(), XCB_SCREEN_SAVER_RESET)),
                  nullptr);
    }
    static void suspend(bool isSuspended) {
        EXPECT_EQ(xcb_request_check(qtConnection(),
                                    xcb_screensaver_suspend_checked(qtConnection(), isSuspended)),
                  nullptr);
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

TEST_F(X11InputIdleOnX11, GrowsUntilTheNextInputWhateverPlaysMeanwhile) {
    EXPECT_LT(idleSec(), 3600.0);
    for (const int resets : {1, 1, 3}) {
        for (int i = 0; i < resets; ++i) {
            reset();
            runFor(milliseconds(50));
        }
        EXPECT_GE(idleSec(), 0.3) << "resets by a player: " << resets;
    }
    for (const bool isSuspended : {true, false}) {
        suspend(isSuspended);
        EXPECT_GE(idleSec(), 0.3) << "suspended by a player: " << isSuspended;
    }
    const Clock::time_point before = Clock::now();
    press();
    EXPECT_LE(idleSec(), since(before));
}

TEST_F(X11InputIdleOnX11, InputThatAResetHidesCountsAtItsOwnTime) {
    const struct {
        std::string_view events;  // i: input, r: a reset, s: suspended and not any more
        bool turns = true;        // the loop, after each of them
    } cases[] = {{"ir", true}, {"ir", false}, {"irr", true}, {"rir", true},
                 {"is", true}, {"sir", true}, {"i", true},   {"ri", false}};
    for (const auto& [events, turns] : cases) {
        ASSERT_TRUE(runUntil([&] { return idleSec() >= 0.3; }));
        Clock::time_point before;
        Clock::time_point after;
        for (const char event : events) {
            if (event == 'i') {
                before = Clock::now();
                press();
                after = Clock::now();
            } else if (event == 'r') {
                reset();
            } else {
                suspend(true);
                suspend(false);
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

TEST_F(X11InputIdleOnX11, ResetsTooFastToBeFollowedCountAsInputUntilTheNextReading) {
    const Clock::time_point before = Clock::now();
    for (int i = 0; i <= X11InputWatch::kMostResets; ++i) {
        reset();
        runFor(milliseconds(10));
    }
    EXPECT_LE(idleSec(), since(before));
    ASSERT_TRUE(runUntil([&] { return idleSec() >= 0.3; }));
    reset();
    EXPECT_GE(idleSec(), 0.3);
}

// Plugs monitors in and out of an Xvfb server, whose only output is named "screen": never touches
// the monitors of a real desktop.
struct QtDisplaysOnX11 : ::testing::Test {
    void SetUp() override {
        if (qtConnection() == nullptr || !xrandr({"--listmonitors"}).contains("screen\n")) {
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

    static QByteArray xrandr(std::initializer_list<const char*> arguments) {
        QStringList list;
        for (const char* argument : arguments) {
            list.push_back(QLatin1String(argument));
        }
        QProcess process;
        process.start(QStringLiteral("xrandr"), list);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }

    static std::vector<Rect> frames(const QtDisplays& displays) {
        std::vector<Rect> frames;
        for (const Display& display : displays.current()) {
            frames.push_back(display.frame);
        }
        std::sort(frames.begin(), frames.end(),
                  [](const Rect& a, const Rect& b) { return a.x < b.x; });
        return frames;
    }

    static std::uint32_t displayAt(const QtDisplays& displays, double x) {
        for (const Display& display : displays.current()) {
            if (display.frame.x == x) {
                return display.displayID;
            }
        }
        return 0;
    }
};

constexpr Rect kLeft{0, 0, 1920, 1080};
constexpr Rect kRight{1920, 0, 1280, 1024};

TEST_F(QtDisplaysOnX11, AMonitorKeepsItsNumberWhileAnotherComesAndGoes) {
    const QtDisplays displays;
    EXPECT_EQ(frames(displays), (std::vector{kLeft, kRight}));
    const std::uint32_t left = displayAt(displays, 0);
    const std::uint32_t right = displayAt(displays, 1920);
    bool told = false;
    const Subscription watch = displays.changed.subscribe([&] { told = true; });

    xrandr({"--delmonitor", "RIGHT"});
    ASSERT_TRUE(runUntil([&] { return told && displays.current().size() == 1; }));
    EXPECT_EQ(displayAt(displays, 0), left);
    EXPECT_EQ(displays.screen(right), nullptr);

    told = false;
    xrandr({"--setmonitor", "RIGHT", "1280/338x1024/270+1920+0", "none"});
    ASSERT_TRUE(runUntil([&] { return told && displays.current().size() == 2; }));
    EXPECT_EQ(displayAt(displays, 0), left);
    EXPECT_NE(displayAt(displays, 1920), right) << "a number is not used twice";
}

TEST_F(QtDisplaysOnX11, TheMainDisplayHasTheActiveWindowElseThePointer) {
    const QtDisplays displays;
    const std::uint32_t left = displayAt(displays, 0);
    const std::uint32_t right = displayAt(displays, 1920);
    QCursor::setPos(100, 100);
    ASSERT_TRUE(runUntil([&] { return QCursor::pos() == QPoint(100, 100); }));
    EXPECT_EQ(displays.mainDisplayID(), left);
    QCursor::setPos(2000, 100);
    ASSERT_TRUE(runUntil([&] { return QCursor::pos() == QPoint(2000, 100); }));
    EXPECT_EQ(displays.mainDisplayID(), right);

    xcb_connection_t* x = qtConnection();
    const xcb_window_t window = xcb_generate_id(x);
    // Else a window manager would move it later, when it finds the time.
    const std::uint32_t pastTheWindowManager[] = {1};
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, rootWindow(), 1500, 50, 800, 600, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      pastTheWindowManager);
    constexpr std::string_view kName = "_NET_ACTIVE_WINDOW";
    xcb_intern_atom_reply_t* atom =
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, kName.size(), kName.data()), nullptr);
    ASSERT_NE(atom, nullptr);
    const auto setActive = [&](xcb_window_t active) {
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, rootWindow(), atom->atom, XCB_ATOM_WINDOW, 32,
                            1, &active);
    };
    setActive(window);
    EXPECT_EQ(displays.mainDisplayID(), left) << "420 of its 800 columns are there";
    const std::uint32_t further[] = {1540};
    xcb_configure_window(x, window, XCB_CONFIG_WINDOW_X, further);
    EXPECT_EQ(displays.mainDisplayID(), right);
    QCursor::setPos(100, 100);
    ASSERT_TRUE(runUntil([&] { return QCursor::pos() == QPoint(100, 100); }));
    EXPECT_EQ(displays.mainDisplayID(), right);
    for (const xcb_window_t gone : {xcb_window_t{XCB_WINDOW_NONE}, window + 1}) {
        setActive(gone);
        EXPECT_EQ(displays.mainDisplayID(), left);
    }
    xcb_delete_property(x, rootWindow(), atom->atom);
    xcb_destroy_window(x, window);
    free(atom);
}

TEST_F(QtDisplaysOnX11, LosingEveryMonitorAndGettingOneBackIsSurvived) {
    const QtDisplays displays;
    xrandr({"--delmonitor", "RIGHT"});
    xrandr({"--delmonitor", "LEFT"});
    // Qt's placeholder lives only for the moment in which the monitor is back.
    int placeholders = 0;
    const auto watch = QObject::connect(qGuiApp, &QGuiApplication::screenAdded, [&] {
        for (const QScreen* screen : QGuiApplication::screens()) {
            placeholders += screen->name().startsWith(u':') ? 1 : 0;
        }
        EXPECT_EQ(displays.current().size(), 1U);
    });
    for (int round = 0; round < 3; ++round) {
        xrandr({"--output", "screen", "--off", "--fb", "1280x720"});
        runFor(std::chrono::milliseconds(50));
        static_cast<void>(displays.mainDisplayID());
        xrandr({"--output", "screen", "--auto"});
        ASSERT_TRUE(runUntil(
            [&] { return frames(displays).size() == 1 && frames(displays)[0].width == 3200; }));
    }
    QObject::disconnect(watch);
    EXPECT_GT(placeholders, 0);
}

}  // namespace
}  // namespace ostrel
