#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

// Compound values as the status item's two D-Bus interfaces name them.
namespace ostrel {

// (iiay) of org.kde.StatusNotifierItem: ARGB32, the most significant byte first.
struct BusPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    [[nodiscard]] static BusPixmap of(const QImage& image);

    bool operator==(const BusPixmap&) const = default;
};

// (sa(iiay)ss) of org.kde.StatusNotifierItem.
struct BusToolTip {
    QString iconName;
    QList<BusPixmap> icon;
    QString title;
    QString text;

    bool operator==(const BusToolTip&) const = default;
};

// (ia{sv}av) of com.canonical.dbusmenu; each of the children is another one.
struct BusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<BusMenuLayout> children;
};

// (ia{sv}) of com.canonical.dbusmenu.
struct BusMenuProperties {
    int id = 0;
    QVariantMap properties;
};

// (ias) of com.canonical.dbusmenu.
struct BusMenuNames {
    int id = 0;
    QStringList names;
};

// (isvu) of com.canonical.dbusmenu.
struct BusMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const BusPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuNames& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuNames& item);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuEvent& event);

// To be called before any of these is sent or received.
void registerBusTypes();

}  // namespace ostrel

Q_DECLARE_METATYPE(ostrel::BusPixmap)
Q_DECLARE_METATYPE(ostrel::BusToolTip)
Q_DECLARE_METATYPE(ostrel::BusMenuLayout)
Q_DECLARE_METATYPE(ostrel::BusMenuProperties)
Q_DECLARE_METATYPE(ostrel::BusMenuNames)
Q_DECLARE_METATYPE(ostrel::BusMenuEvent)
