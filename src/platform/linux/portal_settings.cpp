#include "platform/linux/portal_settings.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <QVariantMap>

namespace ostrel {
namespace {

constexpr QLatin1String kService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kInterface("org.freedesktop.portal.Settings");

QStringList groups() {
    return {QStringLiteral("org.freedesktop.appearance"),
            QStringLiteral("org.gnome.desktop.interface"),
            QStringLiteral("org.kde.kdeglobals.KDE")};
}

}  // namespace

PortalSettings::PortalSettings(const QDBusConnection& bus) : bus_(bus) {
    adopt(bus);
}

PortalSettings::~PortalSettings() = default;

void PortalSettings::adopt(const QDBusConnection& bus) {
    bus_ = bus;
    watcher_.reset();
    if (!bus_.isConnected()) {
        return;
    }
    // Qt registers its own D-Bus types with the first message, and the slot takes one of them.
    qRegisterMetaType<QDBusVariant>();
    // Without the name of the service, which Qt would wait to look up.
    bus_.connect(QString(), kPath, kInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(take(QString, QString, QDBusVariant)));
    watcher_ = std::make_unique<QDBusServiceWatcher>(kService, bus_,
                                                     QDBusServiceWatcher::WatchForRegistration);
    connect(watcher_.get(), &QDBusServiceWatcher::serviceRegistered, this, [this] { askForAll(); });
    askForAll();
}

void PortalSettings::askForAll() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("ReadAll"));
    call.setArguments({groups()});
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                takeAll(*finished);
                finished->deleteLater();
            });
}

void PortalSettings::takeAll(const QDBusPendingCallWatcher& answer) {
    const QDBusMessage message = answer.reply();
    if (message.type() != QDBusMessage::ReplyMessage ||
        message.signature() != QLatin1String("a{sa{sv}}")) {
        return;
    }
    const auto all = qdbus_cast<QMap<QString, QVariantMap>>(message.arguments().constFirst());
    for (auto group = all.cbegin(); group != all.cend(); ++group) {
        for (auto entry = group->cbegin(); entry != group->cend(); ++entry) {
            tell(group.key(), entry.key(), entry.value());
        }
    }
}

void PortalSettings::take(const QString& group, const QString& key, const QDBusVariant& value) {
    tell(group, key, value.variant());
}

void PortalSettings::tell(const QString& group, const QString& key, QVariant value) {
    // Some portals wrap a value twice.
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    arrived.send(group, key, value);
}

}  // namespace ostrel
