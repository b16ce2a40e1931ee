#pragma once

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <optional>

#include "platform/api/frontmost_application.h"
#include "platform/linux/process_table.h"
#include "platform/linux/x11_windows.h"

namespace ostrel {

// The application of the window with the user's attention on X11, by the rule of
// applicationIdentifier(). The process is 0 where the window does not lead to one.
//
// It is asked for every few seconds and changes much more rarely: the X server is asked only after
// the window manager has told of a change.
//
// Absent without a window manager that tells. Needs a QGuiApplication.
class X11FrontmostApplication : public FrontmostApplication, public QAbstractNativeEventFilter {
  public:
    X11FrontmostApplication();
    X11FrontmostApplication(const X11FrontmostApplication&) = delete;
    X11FrontmostApplication& operator=(const X11FrontmostApplication&) = delete;
    ~X11FrontmostApplication() override;

    [[nodiscard]] std::optional<Application> current() const override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    [[nodiscard]] std::optional<Application> ask() const;

    std::uint32_t root_ = 0;  // whose properties the window manager changes; 0: not on X11
    // As it was answered last; absent when that may have changed.
    mutable std::optional<std::optional<Application>> known_;
    X11Windows windows_;
    ProcessTable processes_;
};

}  // namespace ostrel
