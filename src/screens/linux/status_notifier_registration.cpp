#include "screens/linux/status_notifier_registration.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace ostrel {
namespace {

// Also its interface.
constexpr QLatin1String kWatcher("org.kde.StatusNotifierWatcher");
constexpr QLatin1String kWatcherPath("/StatusNotifierWatcher");
constexpr QLatin1String kBus("org.freedesktop.DBus");

QDBusMessage callOf(QLatin1String service, QLatin1String path, QLatin1String interface,
                    QLatin1String member, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, member);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return call;
}

// The bus answers in the place of a watcher that is not there; of one that hangs nothing is known.
bool saysThatNobodyIsThere(const QDBusMessage& answer) {
    return answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
           answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
}

}  // namespace

StatusNotifierRegistration::StatusNotifierRegistration(const QDBusConnection& bus) : bus_(bus) {
    if (!bus_.isConnected()) {
        hasHost_ = false;
        return;
    }
    auto* watcher =
        new QDBusServiceWatcher(kWatcher, bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                ++question_;
                if (owner.isEmpty()) {
                    setHost(false);
                } else {
                    registerItem();
                }
            });
    // Without the name of the service, which Qt would wait to look up.
    for (const QLatin1String signal : {QLatin1String("StatusNotifierHostRegistered"),
                                       QLatin1String("StatusNotifierHostUnregistered")}) {
        bus_.connect(QString(), kWatcherPath, kWatcher, signal, this, SLOT(askForHost()));
    }
    takeName();
}

// Some hosts know items by a name of this form only. Where we may not have it, as in a sandbox, the
// connection's own name has to do.
void StatusNotifierRegistration::takeName() {
    constexpr uint kDoNotQueue = 4;
    constexpr uint kIsOwner = 1;
    constexpr uint kWasOwnerAlready = 4;
    const QString name =
        QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
    call(callOf(kBus, QLatin1String("/org/freedesktop/DBus"), kBus, QLatin1String("RequestName"),
                {name, kDoNotQueue}),
         [this, name](const QDBusMessage& answer) {
             const uint outcome = answer.arguments().value(0).toUInt();
             const bool isOurs = answer.type() == QDBusMessage::ReplyMessage &&
                                 (outcome == kIsOwner || outcome == kWasOwnerAlready);
             itemName_ = isOurs ? name : bus_.baseService();
             registerItem();
         });
}

void StatusNotifierRegistration::registerItem() {
    if (itemName_.isEmpty()) {
        return;
    }
    call(callOf(kWatcher, kWatcherPath, kWatcher, QLatin1String("RegisterStatusNotifierItem"),
                {itemName_}),
         [](const QDBusMessage&) {});
    askForHost();
}

void StatusNotifierRegistration::askForHost() {
    const int question = ++question_;
    call(callOf(kWatcher, kWatcherPath, QLatin1String("org.freedesktop.DBus.Properties"),
                QLatin1String("Get"),
                {QString(kWatcher), QStringLiteral("IsStatusNotifierHostRegistered")}),
         [this, question](const QDBusMessage& answer) {
             if (question != question_) {
                 return;
             }
             if (answer.type() == QDBusMessage::ReplyMessage) {
                 setHost(answer.arguments().value(0).value<QDBusVariant>().variant().toBool());
             } else if (saysThatNobodyIsThere(answer)) {
                 setHost(false);
             }
         });
}

void StatusNotifierRegistration::setHost(bool isThere) {
    if (hasHost_ != isThere) {
        hasHost_ = isThere;
        hostChanged.send();
    }
}

void StatusNotifierRegistration::call(const QDBusMessage& message, const Answer& answer) {
    auto* pending = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [answer](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                answer(finished->reply());
            });
}

}  // namespace ostrel
