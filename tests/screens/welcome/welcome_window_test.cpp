#include "screens/welcome/welcome_window.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <algorithm>

#include "screens/gui.h"
#include "screens/overflow.h"
#include "screens/texts/texts.h"
#include "support/engine_bench.h"

namespace ostrel {

struct WelcomeWindowTest : ::testing::Test {
    void SetUp() override {
        Texts::setLanguage("en");
        bench.launch();
        window = new WelcomeWindow({bench.settings, bench.engine(), [] {},
                                    [this](auto tell) { tellCapabilities = std::move(tell); },
                                    [this](bool /*isEnabled*/) { return canSetLogin; }});
        window->present();
        ASSERT_TRUE(runUntil([this] { return window->isActiveWindow(); }));
    }
    ~WelcomeWindowTest() override { delete window; }

    QAbstractButton* button(const char* name) {
        return window->findChild<QAbstractButton*>(QStringLiteral("ostrel.welcome.") +
                                                   QString::fromLatin1(name));
    }
    void press(const char* name) { button(name)->click(); }
    bool says(const char* key) {
        QCoreApplication::processEvents();  // what was added to a window shows in the next turn
        return std::ranges::any_of(window->findChildren<QLabel*>(), [key](const QLabel* label) {
            return label->isVisible() && label->text() == Texts::of(key);
        });
    }

    EngineBench bench;
    QPointer<WelcomeWindow> window;
    bool canSetLogin = true;
    std::function<void(std::vector<Capability>)> tellCapabilities;
};

TEST_F(WelcomeWindowTest, AStartAtLoginThatCannotBeSavedIsSaid) {
    for (const char* step : {"continue", "continue", "continue"}) {
        press(step);
    }
    canSetLogin = false;
    press("login");
    EXPECT_FALSE(button("login")->isChecked());
    EXPECT_TRUE(says("welcome.ready.login.failed"));
    canSetLogin = true;
    press("login");
    EXPECT_FALSE(says("welcome.ready.login.failed"));
}

TEST_F(WelcomeWindowTest, WhatTheDesktopLacksIsSaidWithItsReason) {
    press("continue");
    press("continue");
    EXPECT_TRUE(says("welcome.presence.asking"));
    tellCapabilities({{Capability::Topic::calls},
                      {Capability::Topic::statusItem, Capability::State::missing,
                       "capability.reason.status_area"}});
    EXPECT_FALSE(says("welcome.presence.asking"));
    for (const char* key : {"capability.topic.calls", "capability.state.works",
                            "capability.state.missing", "capability.reason.status_area"}) {
        EXPECT_TRUE(says(key)) << key;
    }
    press("continue");
    EXPECT_TRUE(says("welcome.ready.where.again"));
    EXPECT_FALSE(says("welcome.ready.where.panel"));
}

TEST_F(WelcomeWindowTest, EveryTextHasRoomInEveryLanguage) {
    const int pages = window->findChild<QStackedWidget*>()->count();
    tellCapabilities({{Capability::Topic::calls}, {Capability::Topic::films}});
    expectRoomInEveryLanguage(*window, pages, [this](int page) {
        window->findChild<QStackedWidget*>()->setCurrentIndex(page);
    });
}

}  // namespace ostrel
