#include "screens/tray_watch.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <utility>

#include "screens/x11_selections.h"

namespace ostrel {
namespace {

// The StatusNotifierItem protocol.
QString watcherName() {
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}
QString watcherPath() {
    return QStringLiteral("/StatusNotifierWatcher");
}

}  // namespace

TrayWatch::TrayWatch(std::function<void()> onAvailable) : onAvailable_(std::move(onAvailable)) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        serviceWatcher_ = std::make_unique<QDBusServiceWatcher>(
            watcherName(), bus, QDBusServiceWatcher::WatchForRegistration);
        connect(serviceWatcher_.get(), &QDBusServiceWatcher::serviceRegistered, this,
                [this] { askForHost(); });
        bus.connect(watcherName(), watcherPath(), watcherName(),
                    QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(askForHost()));
        askForHost();
    }
    if (X11Selections::isX11()) {
        X11Selections::watchManagers();
        QCoreApplication::instance()->installNativeEventFilter(this);
        QMetaObject::invokeMethod(
            this, [this] { lookForTray(); }, Qt::QueuedConnection);
    }
}

TrayWatch::~TrayWatch() {
    if (auto* application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

// A watcher without a host is a desktop that is still starting.
void TrayWatch::askForHost() {
    if (!onAvailable_) {
        return;
    }
    QDBusMessage get = QDBusMessage::createMethodCall(
        watcherName(), watcherPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    get << watcherName() << QStringLiteral("IsStatusNotifierHostRegistered");
    get.setAutoStartService(false);
    auto* call = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(get), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (!reply.isError() && reply.value().variant().toBool()) {
            found();
        }
    });
}

void TrayWatch::lookForTray() {
    if (X11Selections::hasTray()) {
        found();
    }
}

bool TrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (onAvailable_ && X11Selections::isManagerMessage(eventType, message)) {
        QMetaObject::invokeMethod(
            this, [this] { lookForTray(); }, Qt::QueuedConnection);
    }
    return false;
}

void TrayWatch::found() {
    if (const auto onAvailable = std::exchange(onAvailable_, nullptr)) {
        onAvailable();
    }
}

}  // namespace ostrel
