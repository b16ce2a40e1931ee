#pragma once

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <memory>

#include "run_until.h"

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

}  // namespace ostrel
