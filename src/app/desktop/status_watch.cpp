#include "app/desktop/status_watch.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDBusServiceWatcher>
#include <optional>
#include <utility>

#include "app/desktop/command_output.h"
#include "app/desktop/control_names.h"

namespace ostrel {

// A reader that goes shows as an exception of the pipe, also while there is nothing to tell.
StatusWatch::StatusWatch(const RunningInstance& instance, LineOf lineOf)
    : instance_(instance),
      lineOf_(std::move(lineOf)),
      reader_(STDOUT_FILENO, QSocketNotifier::Exception) {
    connect(&reader_, &QSocketNotifier::activated, this,
            [] { QCoreApplication::exit(ExitStatus::kDone); });
}

StatusWatch::End StatusWatch::run() {
    QDBusConnection bus = instance_.bus();
    bus.connect(ControlNames::kService, ControlNames::kPath, ControlNames::kInterface,
                ControlNames::kStatusChanged, this, SLOT(tell(QString)));
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(loseBus()));
    auto* watcher = new QDBusServiceWatcher(ControlNames::kService, bus,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { follow(owner); });
    const RunningInstance::Answer begun = instance_.ask(QStringLiteral("Watch"));
    if (!begun.isDone()) {
        return {begun, 0};
    }
    // In the loop, which the end of the reader must end.
    QMetaObject::invokeMethod(
        this, [this, begun] { tell(QString::fromStdString(begun.text)); }, Qt::QueuedConnection);
    return {begun, QCoreApplication::exec()};
}

void StatusWatch::tell(const QString& status) {
    std::string line = lineOf_(status.toStdString());
    if (line == told_) {
        return;
    }
    told_ = std::move(line);
    const int printed = print(told_ + '\n');
    if (!isOutputOpen()) {
        QCoreApplication::exit(printed);
    }
}

// Another one may have waited for the name, and may be still: while paused it has no change to
// tell.
void StatusWatch::follow(const QString& newOwner) {
    const auto next =
        newOwner.isEmpty() ? std::nullopt : std::optional(instance_.ask(QStringLiteral("Watch")));
    if (!next || !next->isDone()) {
        QCoreApplication::exit(ExitStatus::kDone);
        return;
    }
    tell(QString::fromStdString(next->text));
}

void StatusWatch::loseBus() {
    QCoreApplication::exit(complain({"cli.error.no_bus", {}}, ExitStatus::kUnreachable));
}

}  // namespace ostrel
