#include "app/mac/mac_status_item.h"

#include <QBuffer>
#include <QCursor>
#include <QPixmap>
#include <span>
#include <string>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "menubar/menu_bar_context.h"
#include "screens/status_tool_tip.h"

namespace ostrel {
namespace {

constexpr int kSidePoints = 18;
constexpr int kPixelsAPoint = 2;

QByteArray pngOf(const QPixmap& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

}  // namespace

MacStatusItem::MacStatusItem(const StatusMenu::Services& services)
    : services_(services), menu_(services) {
    item_.setMenu(menu_.toNSMenu());
    const auto refreshAll = [this](const auto&) {
        menu_.refresh();
        refresh();
    };
    // The toolkit does not take a menu of the system for visible.
    QObject::connect(&menu_, &QMenu::aboutToShow, &menu_, [this] { isMenuOpen_ = true; });
    QObject::connect(&menu_, &QMenu::aboutToHide, &menu_, [this] { isMenuOpen_ = false; });
    subscriptions_.push_back(services_.timerEngine.state().onChange([this](const auto&) {
        refresh();
        if (isMenuOpen_) {
            menu_.refresh();
        }
    }));
    subscriptions_.push_back(services_.sessionStateStore.current().onChange(refreshAll));
    subscriptions_.push_back(services_.settingsStore.settings().onChange(refreshAll));
    subscriptions_.push_back(
        services_.timerEngine.holdBegan.subscribe([this](auto) { menu_.refresh(); }));
    refresh();
}

MacStatusItem::~MacStatusItem() {
    item_.setMenu(nullptr);
}

void MacStatusItem::popUpMenu() {
    menu_.popup(QCursor::pos());
}

// The time is a text in the menu bar, so that the picture is a ring alone.
void MacStatusItem::refresh() {
    const MenuBarFormatter::Context context =
        menuBarContext(services_.timerEngine, services_.sessionStateStore, services_.settingsStore);
    const MenuBarFormatter::Output output = MenuBarFormatter::format(context);
    StatusIcon::Face face = StatusIcon::faceOf(
        output, {MenuBarFormatter::nearestChannel(context.state).remainingSec, 0});
    face.label.clear();
    if (face_ != face) {
        face_ = face;
        const QByteArray png = pngOf(StatusIcon::drawStencil(face, kSidePoints * kPixelsAPoint));
        item_.setImage({reinterpret_cast<const unsigned char*>(png.constData()),
                        static_cast<std::size_t>(png.size())},
                       kSidePoints);
    }
    if (const QString title = QString::fromStdString(output.title); title != title_) {
        title_ = title;
        item_.setTitle(output.title);
    }
    if (const QString toolTip = statusToolTip(services_); toolTip != toolTip_) {
        toolTip_ = toolTip;
        item_.setToolTip(toolTip.toStdString());
        item_.setAccessibilityLabel(toolTip.toStdString());
    }
}

}  // namespace ostrel
