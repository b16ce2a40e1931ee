#pragma once

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

namespace ostrel {

// The application that the tests of this program run in: on the X server that DISPLAY names, else
// without any.
class ApplicationEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsSet("DISPLAY") ? "xcb" : "offscreen");
        }
        application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    }
    void TearDown() override { application_.reset(); }

  private:
    char name_[12] = "test_linux";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

inline ::testing::Environment* const kApplicationEnvironment =
    ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

// Runs the event loop until `condition`, which its events bring about, holds; false when it does
// not within `limit`.
inline bool runUntil(const std::function<bool()>& condition,
                     std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    QTimer guard;
    guard.start(limit);
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

// Likewise for a condition that comes about without an event: looks at it every few milliseconds.
inline bool pollUntil(const std::function<bool()>& condition) {
    QTimer look;
    look.start(5);
    return runUntil(condition);
}

// Runs the event loop for a while.
inline void runFor(std::chrono::milliseconds length) {
    static_cast<void>(runUntil([] { return false; }, length));
}

}  // namespace ostrel
