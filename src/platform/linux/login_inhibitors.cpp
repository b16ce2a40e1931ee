#include "platform/linux/login_inhibitors.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <utility>

#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

const QString kBlocked = QStringLiteral("BlockInhibited");

struct Inhibitor {
    QString what;  // such as "sleep:idle"
    QString mode;
    quint32 process = 0;
};

Inhibitor nextOf(const QDBusArgument& list) {
    Inhibitor inhibitor;
    QString who;
    QString why;
    quint32 user = 0;
    list.beginStructure();
    list >> inhibitor.what >> who >> why >> inhibitor.mode >> user >> inhibitor.process;
    list.endStructure();
    return inhibitor;
}

}  // namespace

LoginInhibitors::LoginInhibitors(QDBusConnection systemBus) : bus_(std::move(systemBus)) {
    if (!bus_.isConnected()) {
        return;
    }
    // Without the name of the service, which Qt would wait to look up.
    bus_.connect(QString(), kLoginPath, kPropertiesInterface, QStringLiteral("PropertiesChanged"),
                 this, SLOT(handleChange(QString, QVariantMap, QStringList)));
    auto* watcher = new QDBusServiceWatcher(kLoginService, bus_,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { refresh(); });
    refresh();
}

void LoginInhibitors::refresh() {
    if (!bus_.isConnected()) {
        processes_.clear();
        return;
    }
    if (isAsking_) {
        askAgain_ = true;
        return;
    }
    isAsking_ = true;
    ask(bus_,
        questionTo(kLoginService, kLoginPath, kLoginManager, QStringLiteral("ListInhibitors")),
        this, [this](const QDBusMessage& answer) {
            isAsking_ = false;
            take(answer);
            if (std::exchange(askAgain_, false)) {
                refresh();
            }
        });
}

void LoginInhibitors::take(const QDBusMessage& answer) {
    processes_.clear();
    const auto all = onlyArgument(answer, QLatin1String("a(ssssuu)"));
    if (!all) {
        return;
    }
    const auto list = all->value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        const Inhibitor inhibitor = nextOf(list);
        if (inhibitor.mode == QLatin1String("block") &&
            inhibitor.what.split(u':').contains(QLatin1String("idle"))) {
            processes_.insert(inhibitor.process);
        }
    }
    list.endArray();
}

void LoginInhibitors::handleChange(const QString& interface, const QVariantMap& changed,
                                   const QStringList& invalidated) {
    if (interface == kLoginManager &&
        (changed.contains(kBlocked) || invalidated.contains(kBlocked))) {
        refresh();
    }
}

}  // namespace ostrel
