#include "platform/linux/x11_windows.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/screensaver.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/linux/event_loop.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/x11_frontmost_application.h"
#include "platform/linux/x11_saver_suspensions.h"
#include "platform/linux/x11_screen_windows.h"

namespace ostrel {
namespace {

xcb_connection_t* qtConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

TEST(X11WindowsTest, WithoutXNothingCanBeTold) {
    if (qtConnection() != nullptr) {
        GTEST_SKIP() << "runs on X11";
    }
    const X11Windows windows;
    EXPECT_EQ(windows.active(), std::nullopt);
    EXPECT_EQ(windows.processOf(1), std::nullopt);
    EXPECT_EQ(windows.namesOf(1), X11Windows::Names());
    EXPECT_EQ(X11ScreenWindows().onScreen(), std::nullopt);
    EXPECT_FALSE(X11FrontmostApplication().current());
    EXPECT_TRUE(X11SaverSuspensions().processes().empty());
}

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

struct X11WindowsOnX11 : ::testing::Test {
    void SetUp() override {
        if (qtConnection() == nullptr || X11ScreenWindows().onScreen() == std::nullopt) {
            GTEST_SKIP() << "needs an X server in DISPLAY, and a window manager";
        }
    }

    // A program with a window of its own.
    static std::unique_ptr<QProcess> terminal(const QStringList& arguments) {
        auto process = std::make_unique<QProcess>();
        process->start(QStringLiteral("xterm"),
                       arguments + QStringList{QStringLiteral("-e"), QStringLiteral("sleep 60")});
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
    bool isInFront(std::int64_t process) const {
        const auto application = frontmost.current();
        return application && application->processIdentifier == process;
    }

    static xcb_atom_t atom(std::string_view name) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(
                qtConnection(),
                xcb_intern_atom(qtConnection(), 0, static_cast<std::uint16_t>(name.size()),
                                name.data()),
                nullptr),
            &std::free);
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    template <class Number>
    static void set(xcb_window_t window, std::string_view property, xcb_atom_t type,
                    Number number) {
        xcb_change_property(qtConnection(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                            1, &number);
    }
    static xcb_window_t makeWindow() {
        const xcb_window_t root =
            xcb_setup_roots_iterator(xcb_get_setup(qtConnection())).data->root;
        const xcb_window_t window = xcb_generate_id(qtConnection());
        xcb_create_window(qtConnection(), XCB_COPY_FROM_PARENT, window, root, 0, 0, 200, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }

    const X11FrontmostApplication frontmost;
};

TEST_F(X11WindowsOnX11, TheProgramWhoseWindowIsActiveIsInFrontByItsIdentifier) {
    const auto slack = terminal({QStringLiteral("-class"), QStringLiteral("Slack")});
    ASSERT_TRUE(runUntil([&] { return isInFront(slack->processId()); }));
    EXPECT_EQ(frontmost.current()->bundleIdentifier, "com.tinyspeck.slackmacgap");

    const auto other = terminal({QStringLiteral("-name"), QStringLiteral("instance")});
    ASSERT_TRUE(runUntil([&] { return isInFront(other->processId()); }));
    EXPECT_EQ(frontmost.current()->bundleIdentifier, "XTerm");
    end(*other);
    EXPECT_TRUE(runUntil([&] { return isInFront(slack->processId()); }));
    end(*slack);
    EXPECT_TRUE(runUntil([&] { return !frontmost.current(); }));
}

TEST_F(X11WindowsOnX11, AFullScreenWindowIsAsLargeAsItsDisplayWhateverTheScale) {
    const auto player = terminal({QStringLiteral("-fullscreen")});
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
    if (outputOf(QStringLiteral("xdotool"), {QStringLiteral("version")}).isEmpty()) {
        GTEST_SKIP() << "needs xdotool";
    }
    const auto program = terminal({});
    const auto isShown = [&] { return windowsOf(program->processId()).size() == 1; };
    ASSERT_TRUE(runUntil(isShown));
    const auto clients = X11Windows().onScreen();
    ASSERT_TRUE(clients);
    const auto client =
        std::ranges::find(*clients, program->processId(), &X11Windows::Client::process);
    ASSERT_NE(client, clients->end());
    const QString number = QString::number(client->window);
    const auto tool = [&](const char* what, const QStringList& more = {}) {
        outputOf(QStringLiteral("xdotool"), QStringList{QLatin1String(what), number} + more);
    };
    tool("windowminimize");
    EXPECT_TRUE(runUntil([&] { return !isShown(); }));
    tool("windowactivate");
    EXPECT_TRUE(runUntil(isShown));
    tool("set_desktop_for_window", {QStringLiteral("1")});
    EXPECT_TRUE(runUntil([&] { return !isShown(); }));
    end(*program);
}

TEST_F(X11WindowsOnX11, TheDesktopsOwnWindowsAreLeftOutAndAProgramCannotLieAboutItsProcess) {
    const std::pair<const char*, std::size_t> types[] = {{"_NET_WM_WINDOW_TYPE_NORMAL", 1},
                                                         {"_NET_WM_WINDOW_TYPE_DOCK", 0},
                                                         {"_NET_WM_WINDOW_TYPE_DESKTOP", 0}};
    const auto before = windowsOf(getpid()).size();
    for (const auto& [type, counted] : types) {
        const std::size_t expected = before + counted;
        const xcb_window_t window = makeWindow();
        set(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, atom(type));
        set(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, std::uint32_t{2});
        xcb_map_window(qtConnection(), window);
        xcb_flush(qtConnection());
        // In the window manager's list, which tells that it has made up its mind.
        const QByteArray listed = "0x" + QByteArray::number(window, 16);
        ASSERT_TRUE(runUntil([&] {
            return outputOf(QStringLiteral("xprop"),
                            {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST_STACKING")})
                .contains(listed);
        })) << type;
        EXPECT_TRUE(runUntil([&] { return windowsOf(getpid()).size() == expected; })) << type;
        EXPECT_EQ(X11Windows().processOf(window), getpid());
        xcb_destroy_window(qtConnection(), window);
        xcb_flush(qtConnection());
        ASSERT_TRUE(runUntil([&] { return windowsOf(getpid()).size() == before; }));
    }
}

TEST_F(X11WindowsOnX11, AShadowThatAProgramDrawsIsNoPartOfItsWindow) {
    const std::size_t before = windowsOf(getpid()).size();
    const xcb_window_t window = makeWindow();
    xcb_map_window(qtConnection(), window);
    xcb_flush(qtConnection());
    ASSERT_TRUE(runUntil([&] { return windowsOf(getpid()).size() == before + 1; }));
    const struct {
        std::vector<std::uint32_t> extents;
        int width = 0;
        int height = 0;
    } cases[] = {{{10, 20, 5, 15}, 170, 80},
                 {{10, 20, 5}, 200, 100},
                 {{100, 100, 5, 5}, 200, 100},
                 {{0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}, 200, 100},
                 {{}, 200, 100}};
    for (const auto& [extents, width, height] : cases) {
        xcb_change_property(qtConnection(), XCB_PROP_MODE_REPLACE, window,
                            atom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32,
                            static_cast<std::uint32_t>(extents.size()), extents.data());
        const auto windows = windowsOf(getpid());
        ASSERT_EQ(windows.size(), before + 1);
        EXPECT_EQ(windows.back().width, width);
        EXPECT_EQ(windows.back().height, height);
    }
    xcb_destroy_window(qtConnection(), window);
    xcb_flush(qtConnection());
    ASSERT_TRUE(runUntil([&] { return windowsOf(getpid()).size() == before; }));
}

TEST_F(X11WindowsOnX11, WhoeverSuspendsTheServersScreenSaverIsKnownUntilItResumes) {
    const X11SaverSuspensions suspensions;
    const auto isKnown = [&] { return suspensions.processes().contains(getpid()); };
    EXPECT_FALSE(isKnown());
    xcb_screensaver_suspend(qtConnection(), 1);
    EXPECT_TRUE(isKnown());
    xcb_screensaver_suspend(qtConnection(), 1);
    xcb_screensaver_suspend(qtConnection(), 0);
    EXPECT_TRUE(isKnown()) << "twice suspended, once resumed";
    xcb_screensaver_suspend(qtConnection(), 0);
    EXPECT_FALSE(isKnown());

    xcb_connection_t* other = xcb_connect(nullptr, nullptr);
    xcb_screensaver_suspend(other, 1);
    xcb_flush(other);
    EXPECT_TRUE(runUntil(isKnown));
    xcb_disconnect(other);
    EXPECT_TRUE(runUntil([&] { return !isKnown(); })) << "a player that ends";
}

TEST_F(X11WindowsOnX11, AWindowThatIsGoneTellsNothingAndLongTextsAreCut) {
    const xcb_window_t window = makeWindow();
    const std::string endless(100'000, 'x');
    const auto setText = [&](xcb_atom_t property, xcb_atom_t type, std::string_view text) {
        xcb_change_property(qtConnection(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    };
    setText(atom("_GTK_APPLICATION_ID"), atom("UTF8_STRING"), endless);
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string_view("one\0Two\0", 8));
    set(window, "_KDE_NET_WM_DESKTOP_FILE", XCB_ATOM_CARDINAL, std::uint32_t{7});
    const X11Windows windows;
    X11Windows::Names names = windows.namesOf(window);
    EXPECT_EQ(names.gtkApplication, endless.substr(0, names.gtkApplication.size()));
    EXPECT_LT(names.gtkApplication.size(), 2000U);
    EXPECT_EQ(names.instance, "one");
    EXPECT_EQ(names.windowClass, "Two");
    EXPECT_EQ(names.desktopFile, "") << "not a text";
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, "unfinished");
    names = windows.namesOf(window);
    EXPECT_EQ(names.instance, "unfinished");
    EXPECT_EQ(names.windowClass, "");

    xcb_destroy_window(qtConnection(), window);
    EXPECT_EQ(windows.namesOf(window), X11Windows::Names());
    EXPECT_EQ(windows.processOf(window + 0x10000000), std::nullopt);
}

}  // namespace
}  // namespace ostrel
