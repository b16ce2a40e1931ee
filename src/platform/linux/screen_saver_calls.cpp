#include "platform/linux/screen_saver_calls.h"

#include <QDBusMessage>
#include <QStringList>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

const QString kService = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kBusPath = QStringLiteral("/org/freedesktop/DBus");

bool saysOneOf(const QString& text, std::initializer_list<QLatin1String> words) {
    return std::ranges::any_of(
        words, [&text](QLatin1String word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

ScreenSaverCalls::ScreenSaverCalls(QDBusConnection sessionBus, QDBusConnection monitor)
    : bus_(std::move(sessionBus)), monitor_(std::move(monitor)) {
    if (!bus_.isConnected() || !monitor_.isConnected()) {
        return;
    }
    leaving_.setConnection(bus_);
    leaving_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&leaving_, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString& caller) { forget(caller); });
    auto* watcher =
        new QDBusServiceWatcher(kService, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                hasService_ = !owner.isEmpty();
                while (!callers_.empty()) {
                    forget(QString(callers_.begin()->first));
                }
            });
    ask(bus_, questionToBus(QStringLiteral("NameHasOwner"), {kService}), this,
        [this](const QDBusMessage& answer) {
            const auto hasOwner = onlyArgument(answer, QLatin1String("b"));
            hasService_ = hasOwner && hasOwner->toBool();
            listen();
        });
}

ScreenSaverCalls::~ScreenSaverCalls() {
    monitor_.unregisterObject(QStringLiteral("/"));
}

// The bus cuts off a monitor that says anything: what Qt hears and nobody takes it would answer
// with an error, so this object takes the calls on all paths.
void ScreenSaverCalls::listen() {
    monitor_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    const QString rule =
        QStringLiteral("type='method_call',interface='org.freedesktop.ScreenSaver',member='%1'");
    QDBusMessage question =
        questionTo(kBusService, kBusPath, QStringLiteral("org.freedesktop.DBus.Monitoring"),
                   QStringLiteral("BecomeMonitor"));
    question << QStringList{rule.arg(QLatin1String("Inhibit")),
                            rule.arg(QLatin1String("UnInhibit"))}
             << 0U;
    ask(monitor_, question, this, [](const QDBusMessage&) {});
}

bool ScreenSaverCalls::handleMessage(const QDBusMessage& call, const QDBusConnection&) {
    const QString caller = call.service();
    if (hasService_ && call.interface() == kService && !caller.isEmpty()) {
        if (call.member() == QLatin1String("Inhibit") && call.signature() == QLatin1String("ss")) {
            begin(caller, call.arguments().constLast().toString());
        } else if (call.member() == QLatin1String("UnInhibit")) {
            end(caller);
        }
    }
    return true;
}

QString ScreenSaverCalls::introspect(const QString&) const {
    return {};
}

// Sound counts only where nothing else is said: "Playing some media." may well be a film.
bool ScreenSaverCalls::concernsPicture(const QString& reason) {
    return saysOneOf(reason, {QLatin1String("video"), QLatin1String("film"), QLatin1String("movie"),
                              QLatin1String("screen"), QLatin1String("presentation")}) ||
           !saysOneOf(reason,
                      {QLatin1String("audio"), QLatin1String("music"), QLatin1String("sound"),
                       QLatin1String("song"), QLatin1String("radio"), QLatin1String("podcast")});
}

void ScreenSaverCalls::begin(const QString& caller, const QString& reason) {
    const auto [entry, isNew] = callers_.try_emplace(caller);
    ++(concernsPicture(reason) ? entry->second.pictures : entry->second.sounds);
    if (!isNew) {
        return;
    }
    // In this order: the bus then tells of a caller that leaves before we have its process.
    leaving_.addWatchedService(caller);
    askForProcess(bus_, caller, this, [this, caller](std::optional<std::int64_t> process) {
        const auto known = callers_.find(caller);
        if (known == callers_.end()) {
            return;
        }
        if (process) {
            known->second.process = process;
        } else {
            forget(caller);
        }
    });
}

// A browser lets go of the sound at every seek, and of the picture only along with it.
void ScreenSaverCalls::end(const QString& caller) {
    const auto known = callers_.find(caller);
    if (known == callers_.end()) {
        return;
    }
    --(known->second.sounds > 0 ? known->second.sounds : known->second.pictures);
    if (known->second.sounds + known->second.pictures == 0) {
        forget(caller);
    }
}

void ScreenSaverCalls::forget(const QString& caller) {
    leaving_.removeWatchedService(caller);
    callers_.erase(caller);
}

std::set<std::int64_t> ScreenSaverCalls::processes() const {
    std::set<std::int64_t> all;
    if (monitor_.isConnected()) {
        for (const auto& [name, caller] : callers_) {
            if (caller.process && caller.pictures > 0) {
                all.insert(*caller.process);
            }
        }
    }
    return all;
}

}  // namespace ostrel
