#include "screens/welcome/sample_break.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "core/settings/settings_store.h"
#include "platform/api/motion_settings.h"
#include "screens/action_button.h"
#include "screens/countdown_ring.h"
#include "screens/fade.h"
#include "screens/overlay_backdrop.h"
#include "screens/overlay_look.h"
#include "screens/overlay_surface.h"
#include "screens/overlay_text.h"
#include "screens/texts/texts.h"
#include "screens/window_system.h"

namespace ostrel {
namespace {

constexpr OverlayText::Type kOverline{17, QFont::DemiBold, &OverlayLook::accent, 1, 108.0};
constexpr OverlayText::Type kTitle{44, QFont::Light, &OverlayLook::text, 1};
constexpr OverlayText::Type kNote{17, QFont::Normal, &OverlayLook::quiet, 1};
constexpr double kRingShare = 0.36;  // of the display's shorter side

}  // namespace

// Covers one display, as the window of a break does.
class SampleBreak::Surface : public QWidget {
  public:
    Surface(SampleBreak& owner, QScreen& screen, Role role, const SettingsModel& settings)
        : owner_(owner), look_(OverlayLook::of(settings.overlayTint, screen.size())) {
        const WindowSystem& system = WindowSystem::current();
        setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                       system.coverFlags());
        setWindowTitle(Texts::of("overlay.window.eye"));
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
        backdrop_.setTint(look_.tint, settings.overlayDimOpacity);
        if (system.canBeTranslucent()) {
            setAttribute(Qt::WA_TranslucentBackground);
        } else {
            backdrop_.setPicture(system.pictureOf(screen, screen.geometry()));
        }
        setScreen(&screen);
        makePieces(role, screen.size());
        setGeometry(screen.geometry());
    }

    void appear(double fadeInSec) {
        WindowSystem::current().showCover(*this);
        if (fadeInSec > 0) {
            setContentOpacity(0.0);
            fade_.run(fadeInSec, [this](double share) { setContentOpacity(share); });
        }
    }

    void setRemaining(int seconds) { ring_->setTime(seconds, kLengthSec); }

  protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { owner_.end(); }

    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        for (const QRect& area : event->region()) {
            backdrop_.paint(painter, area, size());
        }
    }

  private:
    void makePieces(Role role, QSize display) {
        ring_ = new CountdownRing(look_, this);
        const int side = static_cast<int>(std::min(display.width(), display.height()) * kRingShare);
        ring_->setFixedSize(side, side);
        auto* column = new QVBoxLayout(this);
        column->setSpacing(look_.px(12));
        column->addStretch(3);
        if (role == Role::secondary) {
            ring_->setFace(CountdownRing::Face::timeOnly);
            column->addWidget(ring_, 0, Qt::AlignHCenter);
            column->addStretch(3);
            return;
        }
        addText(*column, kOverline, "overlay.kind.eye");
        addText(*column, kTitle, "overlay.title.eye");
        column->addSpacing(look_.px(24));
        column->addWidget(ring_, 0, Qt::AlignHCenter);
        column->addStretch(2);
        auto* actions = new QHBoxLayout;
        actions->addStretch();
        for (const auto action : {OverlayAction::skip, OverlayAction::postpone}) {
            auto* button = new ActionButton(look_, action, this);
            connect(button, &QPushButton::clicked, this, [this] { owner_.end(); });
            actions->addWidget(button);
        }
        actions->addStretch();
        column->addLayout(actions);
        addText(*column, kNote, "welcome.sample.note");
        column->addStretch(1);
    }

    void addText(QVBoxLayout& column, const OverlayText::Type& type, std::string_view key) {
        auto* text = new OverlayText(look_, type, this);
        text->setText(Texts::of(key));
        column.addWidget(text);
    }

    void setContentOpacity(double opacity) {
        look_.opacity = opacity;
        for (QWidget* piece : findChildren<QWidget*>()) {
            piece->update();
        }
    }

    SampleBreak& owner_;
    OverlayLook look_;
    OverlayBackdrop backdrop_;
    CountdownRing* ring_ = nullptr;
    Fade fade_;
};

void SampleBreak::Retire::operator()(Surface* surface) const {
    surface->hide();
    surface->deleteLater();
}

SampleBreak::SampleBreak(const SettingsStore& settingsStore, const MotionSettings& motion)
    : settingsStore_(settingsStore), motion_(motion) {
    second_.setInterval(1000);
    second_.callOnTimeout([this] { countDown(); });
}

SampleBreak::~SampleBreak() {
    end();
}

void SampleBreak::show() {
    end();
    const SettingsModel& settings = *settingsStore_.settings();
    for (QScreen* screen : QGuiApplication::screens()) {
        const Role role =
            screen == QGuiApplication::primaryScreen() ? Role::primary : Role::secondary;
        surfaces_.emplace_back(new Surface(*this, *screen, role, settings));
    }
    // All pictures of the desktop are taken before the first window covers one.
    for (const auto& surface : surfaces_) {
        surface->setRemaining(kLengthSec);
        surface->appear(motion_.reduceMotion() ? 0.0 : OverlaySurface::kFadeInSec);
    }
    remainingSec_ = kLengthSec;
    second_.start();
    qApp->installEventFilter(this);
}

void SampleBreak::end() {
    qApp->removeEventFilter(this);
    second_.stop();
    surfaces_.clear();
}

void SampleBreak::countDown() {
    if (--remainingSec_ <= 0) {
        end();
        return;
    }
    for (const auto& surface : surfaces_) {
        surface->setRemaining(remainingSec_);
    }
}

// The window beneath still has the keyboard: its keys must not work there meanwhile.
bool SampleBreak::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QObject::eventFilter(watched, event);
    }
    // A key that is still down from the button beneath is no answer.
    if (!static_cast<QKeyEvent*>(event)->isAutoRepeat()) {
        end();
    }
    return true;
}

}  // namespace ostrel
