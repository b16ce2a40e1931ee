#include "platform/linux/screen_saver_calls.h"

#include <gtest/gtest.h>

#include <QDBusMessage>

#include "platform/linux/power_assertions_bench.h"

namespace ostrel {
namespace {

const QString kSaver = QStringLiteral("org.freedesktop.ScreenSaver");

TEST(ScreenSaverReasonsTest, SoundAloneIsNoPicture) {
    const std::pair<const char*, bool> cases[] = {
        {"Video Wake Lock", true}, {"Playing audio and video", true}, {"", true},
        {"Playing audio", false},  {"audio-playing", false},          {"Playing MUSIC", false},
    };
    for (const auto& [reason, expected] : cases) {
        EXPECT_EQ(ScreenSaverCalls::concernsPicture(QLatin1String(reason)), expected) << reason;
    }
}

struct ScreenSaverCallsTest : PowerAssertionsBench {
    std::unique_ptr<FakeBusService> saver;

    void appear() {
        saver = std::make_unique<FakeBusService>(session, QStringLiteral("saver"), kSaver);
        saver->answer("Inhibit", {7U});
        saver->answer("UnInhibit", {});
        saver->appear();
    }
    // The caller is this process, whichever connection it calls by.
    void call(const QString& by, const char* method, const QVariantList& arguments,
              const char* path = "/org/freedesktop/ScreenSaver") {
        QDBusMessage message = QDBusMessage::createMethodCall(kSaver, QLatin1String(path), kSaver,
                                                              QLatin1String(method));
        message.setArguments(arguments);
        session.connection(by).send(message);
    }
    void inhibit(const QString& by, const char* reason) {
        call(by, "Inhibit", {QStringLiteral("player"), QLatin1String(reason)});
    }
    void release(const QString& by) { call(by, "UnInhibit", {7U}); }
    // The calls so far have been heard.
    void listen(int inhibits, int releases = 0) {
        ASSERT_TRUE(runUntil([&] {
            return saver->timesAsked("Inhibit") == inhibits &&
                   saver->timesAsked("UnInhibit") == releases;
        }));
        settle();
    }

    const QString kPlayer = QStringLiteral("player");
    const QString kBrowser = QStringLiteral("browser");
    const Holders kUs{getpid()};
};

TEST_F(ScreenSaverCallsTest, APlayerCountsUntilItHasLetGoAsOftenAsItHeld) {
    appear();
    launch();
    EXPECT_EQ(holders(), Holders());
    call(kPlayer, "Inhibit", {QStringLiteral("player"), QStringLiteral("film")}, "/ScreenSaver");
    EXPECT_TRUE(becomes(kUs));
    inhibit(kPlayer, "another film");
    release(kPlayer);
    listen(2, 1);
    EXPECT_EQ(holders(), kUs);
    release(kPlayer);
    EXPECT_TRUE(becomes({}));
    release(kPlayer);
    inhibit(kPlayer, "film");
    EXPECT_TRUE(becomes(kUs)) << "one release too many is none for the next";
}

TEST_F(ScreenSaverCallsTest, SoundAloneDoesNotCountAndEndsBeforeThePicture) {
    appear();
    launch();
    inhibit(kPlayer, "Playing audio");
    listen(1);
    EXPECT_EQ(holders(), Holders());
    inhibit(kBrowser, "audio-playing");
    inhibit(kBrowser, "video-playing");
    EXPECT_TRUE(becomes(kUs));
    release(kBrowser);
    listen(3, 1);
    EXPECT_EQ(holders(), kUs);
    release(kBrowser);
    EXPECT_TRUE(becomes({}));
}

TEST_F(ScreenSaverCallsTest, ACallerThatLeavesTheBusHoldsNothing) {
    appear();
    launch();
    inhibit(kPlayer, "film");
    inhibit(kBrowser, "video");
    EXPECT_TRUE(becomes(kUs));
    QDBusConnection::disconnectFromBus(kPlayer);
    settle();
    EXPECT_EQ(holders(), kUs);
    QDBusConnection::disconnectFromBus(kBrowser);
    EXPECT_TRUE(becomes({}));
}

TEST_F(ScreenSaverCallsTest, CallsThatNoServiceTakesDoNotCountAndItsEndEndsTheOthers) {
    launch();
    inhibit(kPlayer, "film");
    session.settle(kPlayer, QStringLiteral("settler"));
    appear();
    settle();
    EXPECT_EQ(holders(), Holders());
    inhibit(kPlayer, "film");
    EXPECT_TRUE(becomes(kUs));
    saver.reset();
    EXPECT_TRUE(becomes({}));
}

TEST_F(ScreenSaverCallsTest, OddCallsAreSurvived) {
    appear();
    launch();
    call(kPlayer, "Inhibit", {7, QStringLiteral("film")});
    call(kPlayer, "UnInhibit", {QStringLiteral("film")});
    listen(1, 1);
    EXPECT_EQ(holders(), Holders());
    inhibit(kPlayer, "film");
    EXPECT_TRUE(becomes(kUs)) << "the bus has not cut us off";
}

}  // namespace
}  // namespace ostrel
