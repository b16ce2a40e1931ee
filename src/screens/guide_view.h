#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QTimer>
#include <array>

#include "screens/fade.h"
#include "screens/figure_scene.h"
#include "screens/guide_layout.h"

namespace ostrel {

class MotionSettings;
struct GuidedMove;
struct GuideFigure;

// The guided move: its figure, which moves gently, its title and its instruction.
//
// For a screen reader it is one label, named by the title and described by the instruction. It
// draws only while it is on the screen, and with reduced motion it stands still.
class GuideView : public QLabel {
  public:
    static constexpr double kChangeSec = 0.8;

    enum class Activity { moving, resting };

    // `look` and `motion` outlive the view, and so does every move that it shows.
    GuideView(const OverlayLook& look, const MotionSettings& motion, QWidget* parent);

    // Shows `move`; one that was shown before fades into it.
    void setMove(const GuidedMove& move);
    void setActivity(Activity activity);

    // The look has changed.
    void adopt();

    // The height at which the figure of the present move keeps its size. What there is more is left
    // free, most of it at the foot.
    [[nodiscard]] int goodHeight(int width) const;
    // What is drawn within the view, empty where there is no room: figure, title, instruction.
    [[nodiscard]] std::array<QRect, 3> places() const;

    [[nodiscard]] bool isMoving() const { return frames_.isActive(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void begin(const GuidedMove& move);
    void arrange();
    void drawFigure();
    [[nodiscard]] QRect onSheet(const QRectF& part) const;
    void startOrStop();
    [[nodiscard]] bool mayMove() const;
    [[nodiscard]] QRect placed(const QRect& inLayout) const;
    [[nodiscard]] bool isExposed() const;
    void paintText(QPainter& painter, const GuideLayout::Text& text, const QColor& colour) const;

    const OverlayLook& look_;
    const MotionSettings& motion_;
    Activity activity_ = Activity::moving;
    const GuidedMove* move_ = nullptr;
    const GuideFigure* figure_ = nullptr;
    GuideLayout::Words words_;
    GuideLayout layout_;
    FigureScene scene_;
    QImage sheet_;
    double presence_ = 1.0;  // 0 between two moves
    QElapsedTimer sinceMove_;
    Fade change_;
    QTimer frames_;
};

}  // namespace ostrel
