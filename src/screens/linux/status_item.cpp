#include "screens/linux/status_item.h"

#include <QApplication>
#include <QCursor>
#include <QDBusMessage>
#include <QSystemTrayIcon>
#include <algorithm>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "menubar/menu_bar_context.h"
#include "overlay/overlay_manager.h"
#include "screens/linux/label_hosts.h"
#include "screens/status_tool_tip.h"
#include "screens/texts/texts.h"

namespace ostrel {
StatusItem::StatusItem(const StatusMenu::Services& services, const QDBusConnection& bus)
    : services_(services),
      bus_(bus),
      menu_(services),
      menuExport_(bus, menu_),
      item_(bus, MenuExport::kPath),
      registration_(bus),
      isLabelDesktop_(LabelHosts::isOneOf(qEnvironmentVariable("XDG_CURRENT_DESKTOP"))),
      trayWatch_([this] { settle(); }) {
    const auto refreshAll = [this] {
        menu_.refresh();
        refresh();
    };
    subscriptions_.push_back(
        services_.timerEngine.state().onChange([this](const auto&) { refresh(); }));
    // Some desktops show a menu without asking for what is in it.
    subscriptions_.push_back(services_.sessionStateStore.current().onChange(
        [refreshAll](const auto&) { refreshAll(); }));
    subscriptions_.push_back(
        services_.settingsStore.settings().onChange([refreshAll](const auto&) { refreshAll(); }));
    subscriptions_.push_back(
        services_.timerEngine.holdBegan.subscribe([this](auto) { menu_.refresh(); }));
    subscriptions_.push_back(registration_.hostChanged.subscribe([this] { settle(); }));
    subscriptions_.push_back(item_.labelReadersChanged.subscribe([this] { refresh(); }));
    subscriptions_.push_back(item_.menuRequested.subscribe([this] { popUpMenu(); }));
    refresh();
}

StatusItem::~StatusItem() = default;

void StatusItem::popUpMenu() {
    menu_.popup(QCursor::pos());
}

void StatusItem::tellNotSaved() {
    const QString title = QApplication::applicationDisplayName();
    const QString text = Texts::of("notice.not_saved");
    isUnsavedTold_ = isHosted() || trayIcon_;
    if (isHosted()) {
        notify(title, text);
    } else if (trayIcon_) {
        trayIcon_->showMessage(title, text);
    }
}

// The toolkit decides once for each process whether its icons are StatusNotifierItems, when the
// first of them is made. Made only where there is no host, they never are: no two icons show.
void StatusItem::settle() {
    face_.reset();
    if (isHosted()) {
        trayIcon_.reset();
    } else if (registration_.hasHost() && !trayIcon_ && TrayWatch::isThere()) {
        makeTrayIcon();
    }
    refresh();
    if (trayIcon_) {
        trayIcon_->show();
    }
    if (!isUnsavedTold_) {
        tellNotSaved();
    }
}

void StatusItem::makeTrayIcon() {
    trayIcon_ = std::make_unique<QSystemTrayIcon>();
    trayIcon_->setContextMenu(&menu_);
    QObject::connect(trayIcon_.get(), &QSystemTrayIcon::activated, &menu_, [this](auto reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            popUpMenu();
        }
    });
}

void StatusItem::refresh() {
    const MenuBarFormatter::Context context =
        menuBarContext(services_.timerEngine, services_.sessionStateStore, services_.settingsStore);
    const MenuBarFormatter::Output output = MenuBarFormatter::format(context);
    const std::int64_t penaltySec = std::max<std::int64_t>(context.pendingPenalty, 0);
    StatusIcon::Face face = StatusIcon::faceOf(
        output, {MenuBarFormatter::nearestChannel(context.state).remainingSec, penaltySec});
    QString label;
    if ((isLabelDesktop_ || item_.isLabelRead()) && !face.label.isEmpty()) {
        label = QString::fromStdString(output.title);
        face.label.clear();
    }
    toolTip_ = statusToolTip(services_);
    show(face, label);
}

void StatusItem::show(const StatusIcon::Face& face, const QString& label) {
    if (!isHosted() && !trayIcon_) {
        return;
    }
    const bool isNewFace = face_ != face;
    face_ = face;
    if (!isHosted()) {
        if (isNewFace) {
            trayIcon_->setIcon(StatusIcon::icon(face));
        }
        if (trayIcon_->toolTip() != toolTip_) {
            trayIcon_->setToolTip(toolTip_);
        }
        return;
    }
    if (isNewFace) {
        item_.setIcon(StatusIcon::icon(face));
    }
    item_.setToolTip(toolTip_);
    item_.setLabel(label);
}

// Over the Desktop Notifications Specification, as the X11 tray's own messages are for X11 trays
// only.
void StatusItem::notify(const QString& title, const QString& text) {
    constexpr uint kReplacesNone = 0;
    constexpr int kServerDecidesHowLong = -1;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    call.setArguments({title, kReplacesNone, QStringLiteral("dialog-warning"), title, text,
                       QStringList(), QVariantMap(), kServerDecidesHowLong});
    bus_.send(call);
}

}  // namespace ostrel
