#include "platform/linux/linux_power_assertions.h"

#include <chrono>
#include <set>
#include <utility>

#include "platform/api/run_loop.h"
#include "platform/linux/login_inhibitors.h"
#include "platform/linux/media_players.h"
#include "platform/linux/screen_saver_calls.h"
#include "platform/linux/session_manager_inhibitors.h"

namespace ostrel {

LinuxPowerAssertions::Buses LinuxPowerAssertions::buses() {
    return {QDBusConnection::sessionBus(),
            QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                          QStringLiteral("ostrel-monitor")),
            QDBusConnection::systemBus()};
}

LinuxPowerAssertions::LinuxPowerAssertions(const Buses& buses, const RunLoop& runLoop,
                                           ProcessTable processes)
    : buses_(buses),
      runLoop_(runLoop),
      processes_(std::move(processes)),
      login_(std::make_unique<LoginInhibitors>(buses_.system)),
      sessionManager_(std::make_unique<SessionManagerInhibitors>(buses_.session, processes_)),
      screenSaver_(std::make_unique<ScreenSaverCalls>(buses_.session, buses_.monitor)),
      players_(std::make_unique<MediaPlayers>(buses_.session)) {}

LinuxPowerAssertions::~LinuxPowerAssertions() = default;

void LinuxPowerAssertions::askAgain() const {
    const RunLoopTime now = runLoop_.now();
    if (!asked_ || now - *asked_ >= std::chrono::seconds(kAskAgainSec)) {
        asked_ = now;
        login_->refresh();
    }
}

std::optional<PowerAssertions::ByProcess> LinuxPowerAssertions::byProcess() const {
    askAgain();
    std::set<std::int64_t> holders = login_->processes();
    holders.merge(sessionManager_->processes());
    holders.merge(screenSaver_->processes());
    holders.merge(players_->processes());
    holders.merge(suspensions_.processes());
    const bool hasBus = buses_.session.isConnected() || buses_.system.isConnected();
    if (holders.empty() && !hasBus) {
        return std::nullopt;
    }
    ByProcess all;
    std::set<std::string> sandboxed;
    for (const std::int64_t holder : holders) {
        if (auto application = processes_.sandboxedApplication(holder)) {
            sandboxed.insert(std::move(*application));
        }
        all[holder] = {"PreventUserIdleDisplaySleep"};
        for (const std::int64_t ancestor : processes_.ancestors(holder)) {
            all[ancestor] = {"PreventUserIdleDisplaySleep"};
        }
    }
    // Those call by way of a proxy, which is no relative of theirs.
    for (const std::string& application : sandboxed) {
        for (const std::int64_t process : processes_.runningInSandbox(application)) {
            all[process] = {"PreventUserIdleDisplaySleep"};
        }
    }
    return all;
}

}  // namespace ostrel
