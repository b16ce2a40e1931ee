#include "screens/toast_surface.h"

#include <QAccessible>
#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QPainterPath>
#include <QPropertyAnimation>
#include <QRegion>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "menubar/toast_dispatcher.h"
#include "platform/api/motion_settings.h"
#include "screens/identifier.h"
#include "screens/texts/texts.h"
#include "screens/window_system.h"

namespace ostrel {
namespace {

constexpr int kFadeMs = 200;
constexpr int kDistance = 16;  // from the edges of the display
constexpr int kShadow = 16;

QRect freeAreaAtPointer() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) {
        screen = QGuiApplication::primaryScreen();
    }
    return screen ? screen->availableGeometry() : QRect();
}

}  // namespace

ToastSurface::ToastSurface(ToastDispatcher& toasts, const MotionSettings& motion,
                           std::function<ToastCard::Shade()> shade)
    : toasts_(toasts),
      motion_(motion),
      shade_(std::move(shade)),
      toastChanges_(toasts.currentToast().onChange([this](const auto& toast) { follow(toast); })) {
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] {
        if (window_) {
            place();
        }
    });
}

ToastSurface::~ToastSurface() {
    delete window_;
}

void ToastSurface::setCovered(bool isCovered) {
    isCovered_ = isCovered;
    follow(*toasts_.currentToast());
}

bool ToastSurface::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_ && event->type() == QEvent::LanguageChange) {
        leave();
        follow(*toasts_.currentToast());
    }
    return QObject::eventFilter(watched, event);
}

void ToastSurface::follow(const std::optional<Toast>& toast) {
    if (!toast || isCovered_) {
        leave();
    } else if (card_ && toast->id == shownID_) {
        card_->show(*toast);
        place();
        if (toast->message.key != spokenKey_) {
            announce(*toast);
        }
    } else {
        leave();
        enter(*toast);
    }
}

void ToastSurface::enter(const Toast& toast) {
    shownID_ = toast.id;
    area_ = freeAreaAtPointer();
    WindowSystem& system = WindowSystem::current();
    window_ =
        new QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                                 Qt::WindowDoesNotAcceptFocus | system.cardFlags());
    identify(window_, QStringLiteral("toast.surface"));
    window_->setWindowTitle(Texts::of(toast.message));
    window_->setAttribute(Qt::WA_ShowWithoutActivating);
    window_->installEventFilter(this);
    const bool isTranslucent = system.canBeTranslucent();
    window_->setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
    card_ = new ToastCard(
        toast, shade_(),
        [this, id = toast.id](const std::string& actionID) {
            if (id == shownID_) {
                toasts_.press(actionID);
            }
        },
        window_);
    card_->setShadow(isTranslucent ? kShadow : 0);
    auto* layout = new QVBoxLayout(window_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(card_);
    place();
    system.showCard(*window_);
    fade(*window_, 1);
    announce(toast);
}

// A screen reader tells it once; a text that only counts is no other text.
void ToastSurface::announce(const Toast& toast) {
    spokenKey_ = toast.message.key;
    card_->setAccessibleName(Texts::of(toast.message));
    QAccessibleEvent appeared(card_, QAccessible::Alert);
    QAccessible::updateAccessibility(&appeared);
}

// To the size of what it says, in its corner; a display that is gone has none.
void ToastSurface::place() {
    const auto isThere = [this](const QScreen* screen) {
        return screen->availableGeometry() == area_;
    };
    if (std::ranges::none_of(QGuiApplication::screens(), isThere)) {
        area_ = freeAreaAtPointer();
    }
    const bool isTranslucent = window_->testAttribute(Qt::WA_TranslucentBackground);
    const int shadow = isTranslucent ? kShadow : 0;
    card_->layout()->activate();
    window_->layout()->invalidate();
    window_->layout()->activate();
    // Not adjustSize(): that makes no window that can stretch less than 100 pixels high.
    const int width = window_->sizeHint().width();
    window_->resize(width, window_->layout()->totalHeightForWidth(width));
    window_->move(area_.right() + 1 - kDistance + shadow - window_->width(),
                  area_.top() + kDistance - shadow);
    if (!isTranslucent) {
        constexpr double kRadius = 16;
        QPainterPath outline;
        outline.addRoundedRect(QRectF(window_->rect()), kRadius, kRadius);
        window_->setMask(QRegion(outline.toFillPolygon().toPolygon()));
    }
}

void ToastSurface::leave() {
    shownID_.clear();
    card_ = nullptr;
    if (QWidget* gone = std::exchange(window_, nullptr)) {
        gone->setAttribute(Qt::WA_TransparentForMouseEvents);
        if (QPropertyAnimation* out = fade(*gone, 0)) {
            connect(out, &QPropertyAnimation::finished, gone, &QObject::deleteLater);
        } else {
            gone->hide();
            gone->deleteLater();
        }
    }
}

// Null where nothing moves.
QPropertyAnimation* ToastSurface::fade(QWidget& window, double to) {
    if (motion_.reduceMotion() || !window.testAttribute(Qt::WA_TranslucentBackground)) {
        return nullptr;
    }
    auto* animation = new QPropertyAnimation(&window, "windowOpacity", &window);
    animation->setDuration(kFadeMs);
    animation->setEasingCurve(QEasingCurve::InOutQuad);
    animation->setStartValue(1.0 - to);
    animation->setEndValue(to);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
    return animation;
}

}  // namespace ostrel
