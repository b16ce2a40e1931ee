#include "platform/linux/portal_motion_settings.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <algorithm>

namespace ostrel {
namespace {

constexpr QLatin1String kService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kInterface("org.freedesktop.portal.Settings");

struct Setting {
    QLatin1String group;
    QLatin1String key;
    double less = 0;  // the value that asks for little motion; true counts as 1, false as 0
};

constexpr std::array<Setting, 3> kSettings{{
    {QLatin1String("org.gnome.desktop.interface"), QLatin1String("enable-animations"), 0},
    {QLatin1String("org.freedesktop.appearance"), QLatin1String("reduced-motion"), 1},
    {QLatin1String("org.kde.kdeglobals.KDE"), QLatin1String("AnimationDurationFactor"), 0},
}};

}  // namespace

PortalMotionSettings::PortalMotionSettings(QDBusConnection bus)
    : bus_(std::move(bus)), forced_(qgetenv("OSTREL_REDUCE_MOTION") == "1") {
    if (!bus_.isConnected()) {
        return;
    }
    // Qt registers its own D-Bus types with the first message, and the slot takes one of them.
    qRegisterMetaType<QDBusVariant>();
    // Without the name of the service, which Qt would wait to look up.
    bus_.connect(QString(), kPath, kInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(take(QString, QString, QDBusVariant)));
    auto* watcher =
        new QDBusServiceWatcher(kService, bus_, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { askForAll(); });
    askForAll();
}

bool PortalMotionSettings::reduceMotion() const {
    return forced_ ||
           std::find(asksForLess_.begin(), asksForLess_.end(), true) != asksForLess_.end();
}

void PortalMotionSettings::askForAll() {
    QStringList groups;
    for (const Setting& setting : kSettings) {
        groups.push_back(setting.group);
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("ReadAll"));
    call.setArguments({groups});
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                takeAll(*finished);
                finished->deleteLater();
            });
}

void PortalMotionSettings::takeAll(const QDBusPendingCallWatcher& answer) {
    const QDBusMessage message = answer.reply();
    if (message.type() != QDBusMessage::ReplyMessage ||
        message.signature() != QLatin1String("a{sa{sv}}")) {
        return;
    }
    const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(message.arguments().constFirst());
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        for (auto entry = group->cbegin(); entry != group->cend(); ++entry) {
            takeValue(group.key(), entry.key(), entry.value());
        }
    }
}

void PortalMotionSettings::take(const QString& group, const QString& key,
                                const QDBusVariant& value) {
    takeValue(group, key, value.variant());
}

void PortalMotionSettings::takeValue(const QString& group, const QString& key, QVariant value) {
    // Some portals wrap a value twice.
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
        if (kSettings[i].group == group && kSettings[i].key == key) {
            // KDE's arrive as text.
            bool isNumber = false;
            const double number = value.toDouble(&isNumber);
            asksForLess_[i] = isNumber && number == kSettings[i].less;
        }
    }
}

}  // namespace ostrel
