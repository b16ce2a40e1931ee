#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QTransform>
#include <vector>

namespace ostrel {

// A drawing in one colour, of lines with round ends and of filled shapes, on a square sheet.
//
// What is added later lies on top and replaces what it covers; so no ink rubs out, as the thin gap
// around an arm that is held before the body.
class FigureScene {
  public:
    static constexpr double kSide = 200.0;  // of the sheet; y points down

    // How much of the colour: 0 to 1.
    struct Ink {
        static constexpr double kSolid = 1.0;
        static constexpr double kSoft = 0.55;
        static constexpr double kFaint = 0.26;
        static constexpr double kNone = 0.0;
    };

    // What is added from now on is seen enlarged, with `focus` in the middle of the sheet.
    void look(QPointF focus, double zoom);
    [[nodiscard]] double zoom() const { return zoom_; }

    // An empty `window` is the whole sheet; else nothing is drawn beyond it.
    void line(const QPainterPath& path, double width, double ink, const QPainterPath& window = {});
    void fill(const QPainterPath& path, double ink, const QPainterPath& window = {});

    // Everything fades away from this height on of the sheet, down to nothing.
    static constexpr double kLongFade = 42.0;
    void fadeBelow(double y, double length = kLongFade);

    // Where it looks other than `before`, on the sheet; empty when it does not.
    [[nodiscard]] QRectF changeSince(const FigureScene& before) const;

    // Replaces what is in the square `sheet`, or in this part of it alone.
    void paint(QImage& sheet, const QColor& colour) const;
    void paint(QImage& sheet, const QColor& colour, const QRectF& part) const;

    bool operator==(const FigureScene&) const = default;

  private:
    struct Shape {
        QPainterPath path;
        QPainterPath window;
        double width = 0;  // 0: filled
        double ink = Ink::kSolid;

        bool operator==(const Shape&) const = default;
        [[nodiscard]] QRectF extent() const;
    };

    void add(Shape shape);

    QTransform view_;
    double zoom_ = 1.0;
    double fadeFrom_ = kSide;
    double fadeLength_ = kLongFade;
    std::vector<Shape> shapes_;
};

}  // namespace ostrel
