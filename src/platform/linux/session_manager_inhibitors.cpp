#include "platform/linux/session_manager_inhibitors.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QList>
#include <utility>

#include "platform/linux/dbus_questions.h"
#include "platform/linux/screen_saver_calls.h"

namespace ostrel {
namespace {

const QString kService = QStringLiteral("org.gnome.SessionManager");
const QString kPath = QStringLiteral("/org/gnome/SessionManager");
const QString kInhibitor = QStringLiteral("org.gnome.SessionManager.Inhibitor");

constexpr quint32 kSessionIdle = 8;

}  // namespace

SessionManagerInhibitors::SessionManagerInhibitors(QDBusConnection sessionBus,
                                                   ProcessTable processes)
    : bus_(std::move(sessionBus)), processes_(std::move(processes)) {
    if (!bus_.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusObjectPath>();
    // Without the name of the service, which Qt would wait to look up.
    bus_.connect(QString(), kPath, kService, QStringLiteral("InhibitorAdded"), this,
                 SLOT(add(QDBusObjectPath)));
    bus_.connect(QString(), kPath, kService, QStringLiteral("InhibitorRemoved"), this,
                 SLOT(remove(QDBusObjectPath)));
    auto* watcher =
        new QDBusServiceWatcher(kService, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
        inhibitors_.clear();
        askForAll();
    });
    askForAll();
}

void SessionManagerInhibitors::askForAll() {
    ask(bus_, questionTo(kService, kPath, kService, QStringLiteral("GetInhibitors")), this,
        [this](const QDBusMessage& answer) {
            if (const auto paths = onlyArgument(answer, QLatin1String("ao"))) {
                for (const auto& path : qdbus_cast<QList<QDBusObjectPath>>(*paths)) {
                    add(path);
                }
            }
        });
}

void SessionManagerInhibitors::add(const QDBusObjectPath& path) {
    const QString name = path.path();
    if (!inhibitors_.try_emplace(name).second) {
        return;
    }
    ask(bus_, questionTo(kService, name, kInhibitor, QStringLiteral("GetFlags")), this,
        [this, name](const QDBusMessage& answer) {
            const auto flags = onlyArgument(answer, QLatin1String("u"));
            if (flags && (flags->toUInt() & kSessionIdle) != 0) {
                askForReason(name);
            }
        });
}

// A browser keeps the session from idling for music as well.
void SessionManagerInhibitors::askForReason(const QString& path) {
    ask(bus_, questionTo(kService, path, kInhibitor, QStringLiteral("GetReason")), this,
        [this, path](const QDBusMessage& answer) {
            const auto reason = onlyArgument(answer, QLatin1String("s"));
            if (!reason || ScreenSaverCalls::concernsPicture(reason->toString())) {
                askForProgram(path);
            }
        });
}

void SessionManagerInhibitors::askForProgram(const QString& path) {
    ask(bus_, questionTo(kService, path, kInhibitor, QStringLiteral("GetAppId")), this,
        [this, path](const QDBusMessage& answer) {
            const auto program = onlyArgument(answer, QLatin1String("s"));
            const auto inhibitor = inhibitors_.find(path);
            if (program && inhibitor != inhibitors_.end()) {
                inhibitor->second = processesOf(program->toString().toStdString());
            }
        });
}

// A sandboxed program is called by its identifier, whatever its executable is called.
std::vector<std::int64_t> SessionManagerInhibitors::processesOf(const std::string& program) const {
    std::vector<std::int64_t> all = processes_.running(program);
    const auto sandboxed = processes_.runningInSandbox(program);
    all.insert(all.end(), sandboxed.begin(), sandboxed.end());
    return all;
}

void SessionManagerInhibitors::remove(const QDBusObjectPath& path) {
    inhibitors_.erase(path.path());
}

std::set<std::int64_t> SessionManagerInhibitors::processes() const {
    std::set<std::int64_t> all;
    if (bus_.isConnected()) {
        for (const auto& [path, processes] : inhibitors_) {
            all.insert(processes.begin(), processes.end());
        }
    }
    return all;
}

}  // namespace ostrel
