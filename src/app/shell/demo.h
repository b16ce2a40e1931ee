#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/subscription.h"
#include "overlay/active_overlay_session.h"
#include "platform/api/run_loop.h"

namespace ostrel {

class AppEnvironment;
class PreferencesStore;

// A schedule in half a minute: one eye break, one body break, then the application quits. Tells on
// standard output what happens as it happens.
class Demo {
  public:
    static constexpr std::int64_t kEyeIntervalSec = 10;

    // Into preferences that nobody keeps; the user's own are not for a demo.
    static void writeSettings(PreferencesStore& preferences);

    // With a folder, pictures of every display are left there.
    Demo(AppEnvironment& environment, RunLoop& runLoop,
         std::optional<std::string> screenshotFolder);
    Demo(const Demo&) = delete;
    Demo& operator=(const Demo&) = delete;

  private:
    void tell(const std::string& what) const;
    void breakOpened();
    void breakClosed(BreakLogEntry::Kind kind, CloseReason reason);
    void photographSoon(const std::string& name);
    void photograph(const std::string& name);

    AppEnvironment& environment_;
    RunLoop& runLoop_;
    const std::optional<std::string> screenshotFolder_;
    const RunLoopTime startedAt_;
    bool hadEyeBreak_ = false;
    bool hadBodyBreak_ = false;

    Timer photoTimer_;
    Timer quitTimer_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
