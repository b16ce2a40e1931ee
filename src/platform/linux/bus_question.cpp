#include "platform/linux/bus_question.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <limits>
#include <utility>

#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

// The bus answers in place of a service that dies, so that no answer is waited for in vain.
constexpr int kUntilAnsweredMs = std::numeric_limits<int>::max();

}  // namespace

BusQuestion::BusQuestion(QDBusConnection bus, Call call, const std::vector<Sign>& signs)
    : bus_(std::move(bus)), call_(std::move(call)) {
    if (!bus_.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusMessage>();
    for (const Sign& sign : signs) {
        // Without the name of the service, which Qt would wait to look up.
        bus_.connect(QString(), call_.path, sign.interface, sign.member, sign.arguments, QString(),
                     this, SLOT(handleSign(QDBusMessage)));
    }
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(loseBus()));
    auto* watcher = new QDBusServiceWatcher(call_.service, bus_,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                forget();
                if (!owner.isEmpty()) {
                    ask();
                }
            });
    ask();
}

void BusQuestion::handleSign(const QDBusMessage& sign) {
    if (!isAnswered() || sign.service() != owner_) {
        return;  // a stranger's, or the answer is still to come and will tell
    }
    if (isAsking_) {
        isStale_ = true;
    } else {
        ask();
    }
}

void BusQuestion::loseBus() {
    forget();
}

void BusQuestion::forget() {
    ++question_;
    owner_.clear();
    isAsking_ = false;
    isStale_ = false;
    answered.send(QDBusMessage());
}

void BusQuestion::ask() {
    isAsking_ = true;
    QDBusMessage message = questionTo(call_.service, call_.path, call_.interface, call_.member);
    message.setArguments(call_.arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, kUntilAnsweredMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, number = ++question_](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (number == question_) {
                    take(finished->reply());
                }
            });
}

void BusQuestion::take(const QDBusMessage& answer) {
    isAsking_ = false;
    // An error may be the bus's, in place of a service that is not there.
    owner_ = answer.service() == kBusService ? QString() : answer.service();
    if (std::exchange(isStale_, false) && isAnswered()) {
        ask();
    }
    answered.send(answer);
}

}  // namespace ostrel
