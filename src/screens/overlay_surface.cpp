#include "screens/overlay_surface.h"

#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "core/settings/settings_store.h"
#include "overlay/overlay_manager.h"
#include "screens/overlay_view.h"
#include "screens/texts/texts.h"
#include "screens/window_system.h"

namespace ostrel {
namespace {

QScreen* screenOf(const QRect& frame) {
    QScreen* screen = QGuiApplication::screenAt(frame.center());
    return screen ? screen : QGuiApplication::primaryScreen();
}

}  // namespace

OverlaySurface::OverlaySurface(OverlayManager& manager, BreakLogEntry::Kind kind, Role role,
                               OnFirstPaint onFirstPaint)
    : manager_(manager),
      view_(new OverlayView(manager, kind, role, this)),
      onFirstPaint_(std::move(onFirstPaint)) {
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   WindowSystem::current().coverFlags());
    setWindowTitle(
        Texts::of(kind == BreakLogEntry::Kind::eye ? "overlay.window.eye" : "overlay.window.body"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    // Every pixel is drawn here.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    backdrop_.setTint(view_->look().tint, manager.settingsStore().settings()->overlayDimOpacity);
    // No button begins with the focus, so that a stray Space presses nothing.
    setFocus();
}

void OverlaySurface::appear(const QRect& frame) {
    QScreen* screen = screenOf(frame);
    WindowSystem& system = WindowSystem::current();
    if (system.canBeTranslucent()) {
        setAttribute(Qt::WA_TranslucentBackground);
    } else if (screen) {
        backdrop_.setPicture(system.pictureOf(*screen, frame));
    }
    if (screen) {
        setScreen(screen);
    }
    view_->setContentOpacity(manager_.motion().reduceMotion() ? 1.0 : 0.0);
    setGeometry(frame);
    system.showCover(*this);
}

void OverlaySurface::moveTo(const QRect& frame) {
    if (frame != geometry()) {
        setGeometry(frame);
    }
}

void OverlaySurface::setRole(Role role) {
    view_->setRole(role);
}

void OverlaySurface::fadeOut(double seconds) {
    QPixmap picture(size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    render(&picture);
    lastPicture_ = picture;
    view_->hide();
    setFocus();
    fade_.run(seconds, [this](double share) {
        lastOpacity_ = 1.0 - share;
        update();
        if (share >= 1.0) {
            hide();
        }
    });
}

void OverlaySurface::retire() {
    fade_.stop();
    view_->detach();
    hide();
}

void OverlaySurface::resizeEvent(QResizeEvent*) {
    view_->setGeometry(rect());
}

void OverlaySurface::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (event->rect() != rect()) {
        backdrop_.keep(view_->busyPlaces(), size(), devicePixelRatioF());
    }
    for (const QRect& area : event->region()) {
        if (lastPicture_.isNull()) {
            backdrop_.paint(painter, area, size());
        } else {
            backdrop_.paintDesktop(painter, area);
        }
    }
    if (!lastPicture_.isNull()) {
        painter.setOpacity(lastOpacity_);
        painter.drawPixmap(QPoint(), lastPicture_);
    }
    const bool isOnScreen = windowHandle() && windowHandle()->isExposed();
    if (isOnScreen && !std::exchange(hasPainted_, true)) {
        // What is painted now is on the screen when the loop turns.
        QMetaObject::invokeMethod(
            this, [this] { beginFadeIn(); }, Qt::QueuedConnection);
    }
}

void OverlaySurface::beginFadeIn() {
    if (!isVisible()) {
        return;  // retired meanwhile; its owner may be gone
    }
    if (!manager_.motion().reduceMotion() && lastPicture_.isNull()) {
        fade_.run(kFadeInSec, [this](double share) { view_->setContentOpacity(share); });
    }
    if (onFirstPaint_) {
        onFirstPaint_();
    }
}

}  // namespace ostrel
