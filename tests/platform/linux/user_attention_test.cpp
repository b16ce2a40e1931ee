#include "platform/linux/user_attention.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QProcess>
#include <QStringList>
#include <QWindow>

#include "platform/linux/event_loop.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

QByteArray property(const QStringList& window, const char* name) {
    QProcess xprop;
    xprop.start(QStringLiteral("xprop"), window + QStringList{QLatin1String(name)});
    xprop.waitForFinished();
    return xprop.readAllStandardOutput();
}

bool demandsAttention(const QWindow& window) {
    return property({QStringLiteral("-id"), QString::number(window.winId())}, "_NET_WM_STATE")
        .contains("_NET_WM_STATE_DEMANDS_ATTENTION");
}

// The window manager may be later than the program to know that.
bool nothingIsActive() {
    return QGuiApplication::focusWindow() == nullptr &&
           property({QStringLiteral("-root")}, "_NET_ACTIVE_WINDOW").contains("# 0x0");
}

TEST(UserAttentionTest, OnlyAListedWindowThatTheUserHasTurnedAwayFromAsksForIt) {
    if (QGuiApplication::platformName() != QStringLiteral("xcb")) {
        GTEST_SKIP() << "needs an X server in DISPLAY";
    }
    requestUserAttention();
    QWindow overlay;
    overlay.setFlags(Qt::BypassWindowManagerHint);
    overlay.resize(50, 50);
    overlay.show();
    requestUserAttention();

    QWindow window;
    window.resize(200, 100);
    window.show();
    if (!runUntil([&] { return window.isActive(); }, 3s)) {
        GTEST_SKIP() << "needs a window manager";
    }
    QWindow other;
    other.resize(200, 100);
    other.show();
    ASSERT_TRUE(runUntil([&] { return other.isActive(); }));
    requestUserAttention();
    EXPECT_FALSE(demandsAttention(window)) << "the user is with another of ours";
    other.close();
    ASSERT_TRUE(runUntil([&] { return window.isActive(); }));
    requestUserAttention();
    window.showMinimized();
    ASSERT_TRUE(runUntil(nothingIsActive));
    EXPECT_FALSE(demandsAttention(window)) << "the user was there";

    requestUserAttention();
    EXPECT_TRUE(runUntil([&] { return demandsAttention(window); }));
    EXPECT_FALSE(demandsAttention(overlay));
    window.showNormal();
    window.requestActivate();
    EXPECT_TRUE(runUntil([&] { return window.isActive() && !demandsAttention(window); }));
}

}  // namespace
}  // namespace ostrel
