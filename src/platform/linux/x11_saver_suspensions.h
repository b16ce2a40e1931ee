#pragma once

#include <cstdint>
#include <set>

namespace ostrel {

// The processes that have told the X server itself to leave its screen saver off for as long as
// they play (MIT-SCREEN-SAVER), as players do that do without a desktop. Nothing announces it, but
// the server tells what each program holds (X-Resource).
//
// Nobody where Qt does not run on X11. Needs a QGuiApplication.
class X11SaverSuspensions {
  public:
    X11SaverSuspensions();

    // Asks the server, for the price of three round trips.
    [[nodiscard]] std::set<std::int64_t> processes() const;

  private:
    std::uint32_t suspension_ = 0;  // the server's name for the thing; 0: it cannot be told
};

}  // namespace ostrel
