#pragma once

#include <QDBusConnection>
#include <memory>
#include <optional>
#include <set>

#include "base/clock.h"
#include "platform/api/power_assertions.h"
#include "platform/linux/process_table.h"
#include "platform/linux/x11_saver_suspensions.h"

namespace ostrel {

class LoginInhibitors;
class MediaPlayers;
class RunLoop;
class ScreenSaverCalls;
class ScreenWindows;
class SessionManagerInhibitors;

// Who keeps the display awake, as far as it can be told: from the login manager, the session
// manager, the calls to the screen saver, the video players that are playing, and the X server.
// Each of these may be missing, appear later and go.
//
// Answers from what is known, at once; what the login manager knows is asked anew for the next
// time. The ancestors of such a process count as well, up to the first that has a window on the
// screen, for many a program has its windows in another process than its player.
class LinuxPowerAssertions : public PowerAssertions {
  public:
    static constexpr std::int64_t kAskAgainSec = 5;

    // One that is not connected is survived.
    struct Buses {
        QDBusConnection session;
        QDBusConnection monitor;  // to the session bus as well, and for nothing else
        QDBusConnection system;
    };
    // The user's own; makes the one for `monitor`.
    [[nodiscard]] static Buses buses();

    // The run loop and the windows outlive this object. Needs a QGuiApplication.
    LinuxPowerAssertions(const Buses& buses, const RunLoop& runLoop, const ScreenWindows& windows,
                         ProcessTable processes = ProcessTable());
    LinuxPowerAssertions(const LinuxPowerAssertions&) = delete;
    LinuxPowerAssertions& operator=(const LinuxPowerAssertions&) = delete;
    ~LinuxPowerAssertions() override;

    // From now on over this session bus, which is at that address: the one before is gone.
    void adopt(const QDBusConnection& session, const QString& address);

    // Absent when there is no bus at all, and nobody known without.
    [[nodiscard]] std::optional<ByProcess> byProcess() const override;

  private:
    void listenToSession();
    void askAgain() const;
    [[nodiscard]] std::set<std::int64_t> processesWithWindows() const;

    Buses buses_;
    const RunLoop& runLoop_;
    const ScreenWindows& windows_;
    ProcessTable processes_;
    mutable std::optional<RunLoopTime> asked_;
    X11SaverSuspensions suspensions_;
    std::unique_ptr<LoginInhibitors> login_;
    std::unique_ptr<SessionManagerInhibitors> sessionManager_;
    std::unique_ptr<ScreenSaverCalls> screenSaver_;
    std::unique_ptr<MediaPlayers> players_;
};

}  // namespace ostrel
