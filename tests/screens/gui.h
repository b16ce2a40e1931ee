#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>
#include <memory>

#include "run_until.h"

namespace ostrel {

// The application that the tests of this program run in: without a screen and without a bus.
class GuiEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("TZ", "UTC");
        qputenv("LC_ALL", "C");
        application_ = std::make_unique<QApplication>(argumentCount_, arguments_);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override { application_.reset(); }

  private:
    char name_[13] = "test_screens";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    std::unique_ptr<QApplication> application_;
};

inline ::testing::Environment* const kGuiEnvironment =
    ::testing::AddGlobalTestEnvironment(new GuiEnvironment);

enum class Repeat { no, automatic };

// A key press and its release, as they reach the window from outside.
inline void sendKey(QWidget& widget, int key, Repeat repeat = Repeat::no) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), repeat == Repeat::automatic);
        if (QWindow* window = widget.windowHandle()) {
            QCoreApplication::sendEvent(window, &event);
        }
    }
}

}  // namespace ostrel
