#pragma once

#include "platform/api/frontmost_application.h"
#include "platform/linux/process_table.h"
#include "platform/linux/x11_windows.h"

namespace ostrel {

// The application of the window with the user's attention on X11, by the rule of
// applicationIdentifier(). The process is 0 where the window does not lead to one.
//
// Absent without a window manager that tells. Needs a QGuiApplication.
class X11FrontmostApplication : public FrontmostApplication {
  public:
    [[nodiscard]] std::optional<Application> current() const override;

  private:
    X11Windows windows_;
    ProcessTable processes_;
};

}  // namespace ostrel
