#include "screens/linux/status_notifier_item.h"

#include <QApplication>
#include <QDBusObjectPath>

#include "screens/linux/bus_types.h"

namespace ostrel {
namespace {

constexpr QLatin1String kLabel("XAyatanaLabel");

// A text as wide as the label will be when its digits are others.
QString guideOf(QString label) {
    for (QChar& character : label) {
        if (character.isDigit()) {
            character = QLatin1Char('0');
        }
    }
    return label;
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, const QString& menuPath)
    : BusObject(bus, {QLatin1String("/StatusNotifierItem"),
                      QLatin1String("org.kde.StatusNotifierItem")}) {
    registerBusTypes();
    fillIn(menuPath);
    const auto askForMenu = [this](const QDBusMessage& call) {
        menuRequested.send();
        return call.createReply();
    };
    const auto doNothing = [](const QDBusMessage& call) { return call.createReply(); };
    addMethod("Activate", "x:i y:i", "", askForMenu);
    addMethod("ContextMenu", "x:i y:i", "", askForMenu);
    addMethod("SecondaryActivate", "x:i y:i", "", doNothing);
    addMethod("Scroll", "delta:i orientation:s", "", doNothing);
    for (const char* signal : {"NewTitle", "NewIcon", "NewToolTip"}) {
        addSignal(signal, "");
    }
    addSignal("NewStatus", "status:s");
    addSignal("XAyatanaNewLabel", "label:s guide:s");

    labelReaders_.setConnection(bus);
    labelReaders_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&labelReaders_, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString& reader) {
                labelReaders_.removeWatchedService(reader);
                labelReadersChanged.send();
            });
}

void StatusNotifierItem::fillIn(const QString& menuPath) {
    const QVariant noIcon = QVariant::fromValue(QList<BusPixmap>());
    const std::pair<QLatin1String, QVariant> values[] = {
        {QLatin1String("Category"), QStringLiteral("ApplicationStatus")},
        {QLatin1String("Id"), QStringLiteral("ostrel")},
        {QLatin1String("Title"), QApplication::applicationDisplayName()},
        {QLatin1String("Status"), QStringLiteral("Active")},
        {QLatin1String("WindowId"), 0},
        {QLatin1String("IconName"), QString()},
        {QLatin1String("IconPixmap"), noIcon},
        {QLatin1String("OverlayIconName"), QString()},
        {QLatin1String("OverlayIconPixmap"), noIcon},
        {QLatin1String("AttentionIconName"), QString()},
        {QLatin1String("AttentionIconPixmap"), noIcon},
        {QLatin1String("AttentionMovieName"), QString()},
        {QLatin1String("ToolTip"), QVariant::fromValue(BusToolTip())},
        {QLatin1String("Menu"), QVariant::fromValue(QDBusObjectPath(menuPath))},
        {QLatin1String("ItemIsMenu"), true},
        {kLabel, QString()},
        {QLatin1String("XAyatanaLabelGuide"), QString()},
    };
    for (const auto& [name, value] : values) {
        setValue(name, value);
    }
}

void StatusNotifierItem::setIcon(const QIcon& icon) {
    QList<BusPixmap> pixmaps;
    for (const QSize& size : icon.availableSizes()) {
        pixmaps.push_back(BusPixmap::of(icon.pixmap(size, 1.0).toImage()));
    }
    if (setValue(QLatin1String("IconPixmap"), QVariant::fromValue(pixmaps))) {
        sendSignal(QLatin1String("NewIcon"));
    }
}

void StatusNotifierItem::setToolTip(const QString& toolTip) {
    if (setValue(QLatin1String("ToolTip"), QVariant::fromValue(BusToolTip{{}, {}, toolTip, {}}))) {
        sendSignal(QLatin1String("NewToolTip"));
    }
}

void StatusNotifierItem::setLabel(const QString& label) {
    if (setValue(kLabel, label)) {
        const QString guide = guideOf(label);
        setValue(QLatin1String("XAyatanaLabelGuide"), guide);
        sendSignal(QLatin1String("XAyatanaNewLabel"), {label, guide});
    }
}

void StatusNotifierItem::handleRead(const QString& name, const QString& asker) {
    if (name == kLabel && !labelReaders_.watchedServices().contains(asker)) {
        labelReaders_.addWatchedService(asker);
        labelReadersChanged.send();
    }
}

}  // namespace ostrel
