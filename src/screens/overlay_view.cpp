#include "screens/overlay_view.h"

#include <QApplication>
#include <QHoverEvent>
#include <algorithm>
#include <utility>

#include "core/settings/settings_store.h"
#include "overlay/guided_moves.h"
#include "overlay/overlay_manager.h"
#include "screens/action_button.h"
#include "screens/countdown_ring.h"
#include "screens/guide_view.h"
#include "screens/overlay_text.h"
#include "screens/penalty_banner.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr OverlayText::Type kOverline{17, QFont::DemiBold, &OverlayLook::accent, 1, 108.0};
constexpr OverlayText::Type kTitle{44, QFont::Light, &OverlayLook::text, 2};
constexpr OverlayText::Type kSkipCost{14, QFont::Normal, &OverlayLook::quiet, 1};
constexpr OverlayText::Type kMessage{21, QFont::Normal, &OverlayLook::quiet, 3};

// A pointer that only trembles, or that a window appears beneath, asks for nothing.
constexpr double kPointerMove = 8.0;

QString perKind(BreakLogEntry::Kind kind, std::string_view eyeKey, std::string_view bodyKey) {
    return Texts::of(kind == BreakLogEntry::Kind::eye ? eyeKey : bodyKey);
}

}  // namespace

OverlayView::OverlayView(OverlayManager& manager, BreakLogEntry::Kind kind, Role role,
                         QWidget* parent)
    : QWidget(parent), manager_(manager), kind_(kind), role_(role) {
    setAttribute(Qt::WA_Hover);
    look_ = OverlayLook::of(manager.settingsStore().settings()->overlayTint, size());
    makePieces();
    subscriptions_.push_back(manager.activeSession().onChange([this](const auto&) { refresh(); }));
    subscriptions_.push_back(
        manager.bannerDismissed().onChange([this](const auto&) { refresh(); }));
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (std::find(actions_.begin(), actions_.end(), now) != actions_.end()) {
            revealActions();
        }
    });
    refresh();
}

OverlayView::~OverlayView() = default;

void OverlayView::makePieces() {
    overline_ = new OverlayText(look_, kOverline, this);
    overline_->setText(perKind(kind_, "overlay.kind.eye", "overlay.kind.body"));
    title_ = new OverlayText(look_, kTitle, this);
    message_ = new OverlayText(look_, kMessage, this);
    ring_ = new CountdownRing(look_, this);
    for (const auto action : {OverlayAction::done, OverlayAction::skip, OverlayAction::postpone}) {
        auto* button = new ActionButton(look_, action, this);
        connect(button, &QPushButton::clicked, this, [this, action] { manager_.press(action); });
        actions_.push_back(button);
    }
    skipCost_ = new OverlayText(look_, kSkipCost, this);
    banner_ = new PenaltyBanner(
        look_, [this] { manager_.dismissBanner(); }, this);
    banner_->hide();
    areActionsRevealed_ =
        manager_.settingsStore().settings()->overlayStyle != OverlayStyle::minimal;
    if (!areActionsRevealed_) {
        for (ActionButton* button : actions_) {
            button->setRevealed(false);
        }
    }
}

// In another language.
void OverlayView::makePiecesAnew() {
    if (subscriptions_.empty() || !manager_.activeSession()->has_value()) {
        return;
    }
    const bool areRevealed = areActionsRevealed_;
    for (QWidget* piece : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        dropFocusFrom(*piece);
        piece->hide();
        piece->deleteLater();
    }
    guide_ = nullptr;
    actions_.clear();
    makePieces();
    ring_->show();
    if (areRevealed) {
        revealActions();
    }
    refresh();
    arrange();
}

void OverlayView::setRole(Role role) {
    if (role != role_) {
        role_ = role;
        refresh();
        arrange();
    }
}

void OverlayView::setContentOpacity(double opacity) {
    if (opacity != look_.opacity) {
        look_.opacity = opacity;
        for (QWidget* piece : findChildren<QWidget*>()) {
            piece->update();
        }
    }
}

std::vector<QRect> OverlayView::busyPlaces() const {
    std::vector<QRect> places{ring_->geometry()};
    if (guide_ && guide_->isVisible()) {
        places.push_back(guide_->places()[0].translated(guide_->pos()));
    }
    return places;
}

void OverlayView::detach() {
    subscriptions_.clear();
}

void OverlayView::refresh() {
    const auto& session = *manager_.activeSession();
    if (!session) {
        return;
    }
    const bool isWhole = role_ == Role::primary;
    const bool isGuided = manager_.settingsStore().settings()->overlayStyle == OverlayStyle::guided;
    ring_->setFace(isWhole ? CountdownRing::Face::ring : CountdownRing::Face::timeOnly);
    ring_->setTime(session->remainingSec, session->totalSec());
    refreshTitle(*session);
    for (QWidget* piece : {overline_, title_, message_}) {
        piece->setVisible(isWhole && isGuided);
    }
    const bool hasBanner =
        isWhole && isGuided && session->penaltySec > 0 && !*manager_.bannerDismissed();
    if (hasBanner == banner_->isHidden()) {
        banner_->setPenalty(session->penaltySec, *manager_.recentSkipCount());
        dropFocusFrom(*banner_);
        banner_->setVisible(hasBanner);
        arrange();
    }
    refreshGuide(*session);
    refreshActions();
}

void OverlayView::refreshTitle(const ActiveOverlaySession& session) {
    const QString title = session.phase() == ActiveOverlaySession::Phase::ended
                              ? Texts::of("overlay.title.ended")
                              : perKind(kind_, "overlay.title.eye", "overlay.title.body");
    const QString message = QString::fromStdString(session.message.value_or(std::string()));
    if (title != title_->text() || message != message_->text()) {
        title_->setText(title);
        message_->setText(message);
        arrange();
    }
}

void OverlayView::refreshGuide(const ActiveOverlaySession& session) {
    const bool isShown = role_ == Role::primary &&
                         manager_.settingsStore().settings()->overlayStyle == OverlayStyle::guided;
    if (!isShown) {
        if (guide_) {
            guide_->hide();
        }
        return;
    }
    const bool isNew = !guide_ || guide_->isHidden();
    if (!guide_) {
        guide_ = new GuideView(look_, manager_.motion(), this);
    }
    guide_->setMove(GuidedMoveCatalog::moveOf(session));
    guide_->setActivity(session.phase() == ActiveOverlaySession::Phase::ended
                            ? GuideView::Activity::resting
                            : GuideView::Activity::moving);
    if (isNew) {
        guide_->show();
        arrange();
    }
}

void OverlayView::refreshActions() {
    bool hasChanged = false;
    for (ActionButton* button : actions_) {
        const bool isOffered = role_ == Role::primary && manager_.offers(button->action());
        const bool isEnabled = manager_.enables(button->action());
        hasChanged = hasChanged || isOffered == button->isHidden();
        if (!isOffered || !isEnabled) {
            dropFocusFrom(*button);
        }
        button->setEnabled(isEnabled);
        button->setVisible(isOffered);
    }
    if (hasChanged) {
        arrange();
    }
    refreshSkipCost();
}

void OverlayView::refreshSkipCost() {
    const bool canSkip = role_ == Role::primary && manager_.offers(OverlayAction::skip);
    const std::int64_t costSec = canSkip ? manager_.skipCostSec() : 0;
    skipCost_->setVisible(costSec > 0 && areActionsRevealed_);
    if (costSec > 0) {
        skipCost_->setText(Texts::of("overlay.skip.cost %lld", {costSec}));
    }
}

// Left to itself the focus would go on to the next button, and a stray Space press that.
void OverlayView::dropFocusFrom(const QWidget& piece) {
    const QWidget* focused = window()->focusWidget();
    if (focused && (focused == &piece || piece.isAncestorOf(focused))) {
        window()->setFocus();
    }
}

void OverlayView::revealActions() {
    for (ActionButton* button : actions_) {
        button->setRevealed(true);
    }
    if (!std::exchange(areActionsRevealed_, true)) {
        refreshSkipCost();
    }
}

bool OverlayView::event(QEvent* event) {
    if (event->type() == QEvent::HoverMove) {
        const QPointF position = static_cast<QHoverEvent*>(event)->position();
        if (!std::exchange(hasPointerPosition_, true)) {
            firstPointerPosition_ = position;
        } else if ((position - firstPointerPosition_).manhattanLength() >= kPointerMove) {
            revealActions();
        }
    } else if (event->type() == QEvent::LanguageChange) {
        makePiecesAnew();
    }
    return QWidget::event(event);
}

void OverlayView::resizeEvent(QResizeEvent*) {
    adoptLook();
    arrange();
}

void OverlayView::adoptLook() {
    const double opacity = look_.opacity;
    look_ = OverlayLook::of(manager_.settingsStore().settings()->overlayTint, size());
    look_.opacity = opacity;
    for (OverlayText* text : {overline_, title_, message_, skipCost_}) {
        text->adopt();
    }
    for (ActionButton* button : actions_) {
        button->adopt();
    }
    banner_->adopt();
    if (guide_) {
        guide_->adopt();
    }
}

}  // namespace ostrel
