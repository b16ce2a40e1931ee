#include "screens/status_item.h"

#include <QApplication>
#include <QCursor>
#include <QSystemTrayIcon>
#include <algorithm>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "menubar/menu_bar_context.h"
#include "overlay/overlay_manager.h"
#include "screens/texts.h"

namespace ostrel {
namespace {

QString roughCountdown(std::int64_t seconds) {
    constexpr std::int64_t kMinute = 60;
    const std::int64_t shown =
        seconds > kMinute ? ((seconds - 1) / kMinute + 1) * kMinute : seconds;
    return QString::fromStdString(MenuBarFormatter::countdownText(shown));
}

}  // namespace

StatusItem::StatusItem(const StatusMenu::Services& services)
    : services_(services), menu_(services), trayWatch_([this] { appear(); }) {
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
    refresh();
}

StatusItem::~StatusItem() = default;

void StatusItem::popUpMenu() {
    menu_.popup(QCursor::pos());
}

void StatusItem::tellNotSaved() {
    isUnsavedTold_ = static_cast<bool>(icon_);
    if (icon_) {
        icon_->showMessage(QApplication::applicationDisplayName(), Texts::of("notice.not_saved"));
    }
}

void StatusItem::appear() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setContextMenu(&menu_);
    face_.reset();
    refresh();
    icon_->setToolTip(toolTip_);
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, &menu_, [this](auto reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            popUpMenu();
        }
    });
    icon_->show();
    if (!isUnsavedTold_) {
        tellNotSaved();
    }
}

void StatusItem::refresh() {
    const MenuBarFormatter::Context context =
        menuBarContext(services_.timerEngine, services_.sessionStateStore, services_.settingsStore);
    const std::int64_t shownSec =
        addSec(MenuBarFormatter::nearestChannel(context.state).remainingSec,
               std::max<std::int64_t>(context.pendingPenalty, 0));
    const StatusIcon::Face face = StatusIcon::faceOf(MenuBarFormatter::format(context), shownSec);
    if (face != face_) {
        face_ = face;
        if (icon_) {
            icon_->setIcon(StatusIcon::icon(face));
        }
    }
    if (const QString toolTip = composeToolTip(); toolTip != toolTip_) {
        toolTip_ = toolTip;
        if (icon_) {
            icon_->setToolTip(toolTip);
        }
    }
}

QString StatusItem::composeToolTip() const {
    if (!services_.settingsStore.settings()->ostrelEnabled) {
        return Texts::of("menubar.tooltip.off");
    }
    if (const QString held = StatusMenu::stateText(services_); !held.isEmpty()) {
        return Texts::of("menubar.tooltip.on") + QLatin1Char('\n') + held;
    }
    const TimerState& state = *services_.timerEngine.state();
    const QStringList lines{
        Texts::of("menubar.tooltip.default"),
        Texts::of("menubar.status.next_eye %@", {roughCountdown(state.eye.remainingSec)}),
        Texts::of("menubar.status.next_body %@", {roughCountdown(state.body.remainingSec)}),
    };
    return lines.join(QLatin1Char('\n'));
}

}  // namespace ostrel
