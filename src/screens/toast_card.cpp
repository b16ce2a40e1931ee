#include "screens/toast_card.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "screens/countdown_ring.h"
#include "screens/identifier.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr int kTextWidth = 300;
constexpr int kPadding = 18;
constexpr int kGap = 14;
constexpr int kRadius = 16;
constexpr int kSymbolSize = 24;
constexpr int kRingSize = 76;

OverlayLook lookOf(ToastCard::Shade shade) {
    OverlayLook look;
    if (shade == ToastCard::Shade::dark) {
        look.tint = QColor(0x25, 0x29, 0x30);
        look.text = QColor(0xF2, 0xF4, 0xF7);
        look.quiet = QColor(0xB4, 0xBC, 0xC8);
        look.accent = QColor(0x8F, 0xC7, 0xE8);
    } else {
        look.tint = QColor(0xFC, 0xFC, 0xFD);
        look.text = QColor(0x1B, 0x22, 0x2C);
        look.quiet = QColor(0x56, 0x60, 0x70);
        look.accent = QColor(0x1F, 0x6F, 0xA3);
    }
    return look;
}

QColor faint(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

// An "i" or a "!" in its ring: one stroke, one accent.
class Symbol : public QWidget {
  public:
    Symbol(const OverlayLook& look, Toast::Kind kind, QWidget* parent)
        : QWidget(parent), look_(look), kind_(kind) {
        setFixedSize(kSymbolSize, kSymbolSize);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        constexpr double kStroke = 1.8;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(look_.accent, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QRectF box = QRectF(rect()).adjusted(2, 2, -2, -2);
        const QPointF centre = box.center();
        const double arm = box.height() / 4;
        if (kind_ == Toast::Kind::warning) {
            QPainterPath triangle(QPointF(centre.x(), box.top() + 1));
            triangle.lineTo(box.right(), box.bottom() - 1);
            triangle.lineTo(box.left(), box.bottom() - 1);
            triangle.closeSubpath();
            painter.drawPath(triangle);
            paintMark(painter, centre + QPointF(0, arm * 0.5), arm * 0.8, -1);
            return;
        }
        painter.drawEllipse(box);
        if (kind_ == Toast::Kind::error) {
            painter.drawLine(centre - QPointF(arm, arm) * 0.7, centre + QPointF(arm, arm) * 0.7);
            painter.drawLine(centre - QPointF(arm, -arm) * 0.7, centre + QPointF(arm, -arm) * 0.7);
            return;
        }
        paintMark(painter, centre, arm, 1);
    }

  private:
    // A stroke with a dot above (-`down`) or below it.
    static void paintMark(QPainter& painter, QPointF centre, double arm, int down) {
        painter.drawLine(centre + QPointF(0, -0.3 * arm * down), centre + QPointF(0, arm * down));
        painter.drawPoint(centre - QPointF(0, arm * down));
    }

    const OverlayLook& look_;
    const Toast::Kind kind_;
};

QLabel* makeLabel(const QColor& colour, int pixelSize, QFont::Weight weight, QWidget* parent) {
    auto* label = new QLabel(parent);
    QFont font = label->font();
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    label->setFont(font);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    label->setFixedWidth(kTextWidth);
    return label;
}

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    return className == QLatin1String("ostrel::ToastCard")
               ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage)
               : nullptr;
}

}  // namespace

ToastCard::ToastCard(const Toast& toast, Shade shade,
                     std::function<void(const std::string&)> onPress, QWidget* parent)
    : QWidget(parent),
      look_(lookOf(shade)),
      onPress_(std::move(onPress)),
      symbol_(new Symbol(look_, toast.kind, this)) {
    static const bool kIsInstalled = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(kIsInstalled);
    identify(this, QStringLiteral("toast.surface.container"));
    makePieces();
    show(toast);
}

void ToastCard::makePieces() {
    ring_ = new CountdownRing(look_, this);
    ring_->setFixedSize(kRingSize, kRingSize);
    message_ = makeLabel(look_.text, 15, QFont::DemiBold, this);
    secondaryLine_ = makeLabel(look_.quiet, 14, QFont::Normal, this);

    auto* words = new QVBoxLayout;
    words->setSpacing(4);
    words->addWidget(message_);
    words->addWidget(secondaryLine_);
    words->addStretch();
    auto* top = new QHBoxLayout;
    top->setSpacing(kGap);
    top->addWidget(symbol_, 0, Qt::AlignTop);
    top->addWidget(ring_, 0, Qt::AlignVCenter);
    top->addLayout(words);
    top->addStretch();
    top->addStretch();
    buttons_ = new QHBoxLayout;
    buttons_->setSpacing(8);
    auto* all = new QVBoxLayout(this);
    all->setSpacing(kGap);
    all->addLayout(top);
    all->addLayout(buttons_);
    setShadow(0);
    setStyleSheet(styleSheetOfButtons());
}

void ToastCard::setShadow(int margin) {
    shadow_ = margin;
    const int around = kPadding + margin;
    layout()->setContentsMargins(around, around, around, around);
}

void ToastCard::show(const Toast& toast) {
    message_->setText(Texts::of(toast.message));
    secondaryLine_->setVisible(toast.secondaryLine.has_value());
    if (toast.secondaryLine) {
        secondaryLine_->setText(Texts::of(*toast.secondaryLine));
    }
    symbol_->setVisible(!toast.progress);
    ring_->setVisible(toast.progress.has_value());
    if (toast.progress) {
        ring_->setTime(toast.progress->remainingSec, toast.progress->totalSec);
    }
    if (toast.actions != actions_) {
        showActions(toast.actions);
    }
}

void ToastCard::showActions(const std::vector<Toast::Action>& actions) {
    actions_ = actions;
    while (QLayoutItem* item = buttons_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    buttons_->addStretch();
    for (const Toast::Action& action : actions_) {
        auto* button = new QPushButton(Texts::of(action.title), this);
        identify(button, QString::fromStdString("toast.action." + action.id));
        button->setProperty("primary", action.role == Toast::ActionRole::primary);
        button->setCursor(Qt::PointingHandCursor);
        // The press may well take this card away.
        connect(
            button, &QPushButton::clicked, this,
            [onPress = onPress_, id = action.id] { onPress(id); }, Qt::QueuedConnection);
        buttons_->addWidget(button);
        button->show();  // the layout would do so later, and count it for nothing until then
    }
}

QString ToastCard::styleSheetOfButtons() const {
    const auto rgba = [](const QColor& colour) { return colour.name(QColor::HexArgb); };
    return QStringLiteral(
               "QPushButton { font-size: 14px; padding: 7px 14px; border-radius: 9px;"
               " color: %1; background: %2; border: 2px solid transparent; }"
               "QPushButton:hover { background: %3; }"
               "QPushButton:focus { border-color: %4; }"
               "QPushButton[primary=\"true\"] { color: %5; background: %4; }"
               "QPushButton[primary=\"true\"]:hover { background: %6; }")
        .arg(rgba(look_.text), rgba(faint(look_.text, 20)), rgba(faint(look_.text, 44)),
             rgba(look_.accent), rgba(look_.tint), rgba(look_.accent.lighter(112)));
}

void ToastCard::paintEvent(QPaintEvent*) {
    constexpr int kLayers = 14;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF card = QRectF(rect()).adjusted(shadow_, shadow_, -shadow_, -shadow_);
    for (int i = 0; shadow_ > 0 && i < kLayers; ++i) {
        const double grow = shadow_ * (1.0 - static_cast<double>(i) / kLayers) * 0.8;
        painter.setBrush(QColor(0, 0, 0, 4));
        painter.drawRoundedRect(card.adjusted(-grow, -grow + 4, grow, grow + 2), kRadius + grow,
                                kRadius + grow);
    }
    painter.setBrush(look_.tint);
    painter.setPen(QPen(faint(look_.text, 38), 1));
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

}  // namespace ostrel
