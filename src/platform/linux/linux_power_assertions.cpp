#include "platform/linux/linux_power_assertions.h"

#include <chrono>
#include <set>
#include <utility>

#include "platform/api/run_loop.h"
#include "platform/api/screen_windows.h"
#include "platform/linux/login_inhibitors.h"
#include "platform/linux/media_players.h"
#include "platform/linux/screen_saver_calls.h"
#include "platform/linux/session_manager_inhibitors.h"

namespace ostrel {

namespace {

QString monitorName() {
    return QStringLiteral("ostrel-monitor");
}

}  // namespace

LinuxPowerAssertions::Buses LinuxPowerAssertions::buses() {
    return {QDBusConnection::sessionBus(),
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, monitorName()),
            QDBusConnection::systemBus()};
}

LinuxPowerAssertions::LinuxPowerAssertions(const Buses& buses, const RunLoop& runLoop,
                                           const ScreenWindows& windows, ProcessTable processes)
    : buses_(buses),
      runLoop_(runLoop),
      windows_(windows),
      processes_(std::move(processes)),
      login_(std::make_unique<LoginInhibitors>(buses_.system)) {
    listenToSession();
}

LinuxPowerAssertions::~LinuxPowerAssertions() = default;

void LinuxPowerAssertions::adopt(const QDBusConnection& session, const QString& address) {
    screenSaver_.reset();
    QDBusConnection::disconnectFromBus(monitorName());
    buses_.session = session;
    buses_.monitor = QDBusConnection::connectToBus(address, monitorName());
    listenToSession();
}

void LinuxPowerAssertions::listenToSession() {
    sessionManager_ = std::make_unique<SessionManagerInhibitors>(buses_.session, processes_);
    screenSaver_ = std::make_unique<ScreenSaverCalls>(buses_.session, buses_.monitor);
    players_ = std::make_unique<MediaPlayers>(buses_.session);
}

void LinuxPowerAssertions::askAgain() const {
    const RunLoopTime now = runLoop_.now();
    if (!asked_ || now - *asked_ >= std::chrono::seconds(kAskAgainSec)) {
        asked_ = now;
        login_->refresh();
    }
}

std::set<std::int64_t> LinuxPowerAssertions::processesWithWindows() const {
    std::set<std::int64_t> all;
    for (const ScreenWindows::Window& window :
         windows_.onScreen().value_or(std::vector<ScreenWindows::Window>())) {
        if (window.processIdentifier) {
            all.insert(*window.processIdentifier);
        }
    }
    return all;
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
    const std::set<std::int64_t> withWindows =
        holders.empty() ? std::set<std::int64_t>() : processesWithWindows();
    ByProcess all;
    std::set<std::string> sandboxed;
    for (const std::int64_t holder : holders) {
        if (auto application = processes_.sandboxedApplication(holder)) {
            sandboxed.insert(std::move(*application));
        }
        all[holder] = {"PreventUserIdleDisplaySleep"};
        bool isShown = withWindows.contains(holder);
        for (const std::int64_t ancestor : processes_.ancestors(holder)) {
            // What is further up only started what is shown, as a file manager does.
            if (isShown) {
                break;
            }
            all[ancestor] = {"PreventUserIdleDisplaySleep"};
            isShown = withWindows.contains(ancestor);
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
