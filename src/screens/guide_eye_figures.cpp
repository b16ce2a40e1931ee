#include "screens/guide_eye_figures.h"

#include <cmath>
#include <numbers>
#include <tuple>

#include "screens/figure_parts.h"
#include "screens/guide_body_poses.h"

namespace ostrel {
namespace {

using FigureParts::addGround;
using FigureParts::addThin;
using FigureParts::arc;
using FigureParts::between;
using FigureParts::disc;
using FigureParts::polyline;
using FigureParts::wave;
using Ink = FigureScene::Ink;

constexpr double kLine = 6.0;  // of what matters
constexpr double kTurn = 2 * std::numbers::pi;

struct Eye {
    QPointF middle;
    double halfWidth = 0;
    double open = 1.0;  // 0 closed to 1
    QPointF gaze;       // -1 to 1 both ways
    double line = kLine;
};

QPainterPath upperLid(const Eye& eye) {
    const double corner = eye.halfWidth;
    const double lift = corner * (0.42 - 1.26 * eye.open);
    QPainterPath lid(eye.middle - QPointF(corner, 0));
    lid.cubicTo(eye.middle + QPointF(-corner * 0.45, lift),
                eye.middle + QPointF(corner * 0.45, lift), eye.middle + QPointF(corner, 0));
    return lid;
}

void addEye(FigureScene& scene, const Eye& eye) {
    const double corner = eye.halfWidth;
    const QPainterPath upper = upperLid(eye);
    QPainterPath lower(eye.middle + QPointF(corner, 0));
    lower.cubicTo(eye.middle + QPointF(corner * 0.45, corner * 0.66),
                  eye.middle + QPointF(-corner * 0.45, corner * 0.66),
                  eye.middle - QPointF(corner, 0));
    if (eye.open > 0.04) {
        QPainterPath within = upper;
        within.connectPath(lower);
        const QPointF iris = eye.middle + QPointF(eye.gaze.x() * corner * 0.42,
                                                  eye.gaze.y() * corner * 0.2 - corner * 0.06);
        scene.fill(disc(iris, corner * 0.36), Ink::kSolid, within);
        scene.fill(disc(iris + QPointF(corner, -corner) * 0.11, corner * 0.1), Ink::kNone, within);
        scene.line(lower, eye.line, Ink::kSoft);
    }
    scene.line(upper, eye.line, Ink::kSolid);
}

// Five of them. They point up from an open eye and down from a closed one; in between they point at
// us and are not seen.
void addLashes(FigureScene& scene, const Eye& eye) {
    constexpr double kLength = 15;
    constexpr double kUpFrom = 0.4;
    constexpr double kDownFrom = 0.12;
    const double up = (eye.open - kUpFrom) / (1 - kUpFrom);
    const double down = (kDownFrom - eye.open) / kDownFrom;
    if (up <= 0 && down <= 0) {
        return;
    }
    const double y = up > 0 ? -kLength * up : kLength * 0.8 * down;
    const QPainterPath lid = upperLid(eye);
    for (const double at : {0.18, 0.34, 0.5, 0.66, 0.82}) {
        const QPointF root = lid.pointAtPercent(at);
        scene.line(polyline({root, root + QPointF((at - 0.5) * 34, y)}), eye.line * 0.75,
                   Ink::kSolid);
    }
}

QPainterPath mountains() {
    QPainterPath ridge(QPointF(0, 132));
    for (const QPointF& peak :
         {QPointF(26, 112), QPointF(44, 124), QPointF(84, 72), QPointF(104, 98), QPointF(122, 82),
          QPointF(156, 122), QPointF(172, 112), QPointF(200, 132)}) {
        ridge.lineTo(peak);
    }
    ridge.lineTo(200, 200);
    ridge.lineTo(0, 200);
    ridge.closeSubpath();
    return ridge;
}

QPainterPath cloud(QPointF at, double size) {
    QPainterPath puffs;
    puffs.setFillRule(Qt::WindingFill);
    puffs.addEllipse(at + QPointF(-9, 1) * size, 6 * size, 5 * size);
    puffs.addEllipse(at + QPointF(0, -3) * size, 8 * size, 8 * size);
    puffs.addEllipse(at + QPointF(9, 1) * size, 6 * size, 5 * size);
    puffs.addRoundedRect(QRectF(at + QPointF(-15, 0) * size, at + QPointF(15, 6) * size), 3 * size,
                         3 * size);
    return puffs;
}

// Two round fields of view in one.
QPainterPath fieldGlasses() {
    constexpr double kRadius = 56;
    constexpr double kApart = 34;  // of each middle from the sheet's
    const double notch = std::acos(kApart / kRadius) * 360 / kTurn;
    QPainterPath view = arc({100 - kApart, 100}, kRadius, kRadius, notch, 360 - 2 * notch);
    view.arcTo(QRectF(100 + kApart - kRadius, 100 - kRadius, 2 * kRadius, 2 * kRadius), 180 + notch,
               360 - 2 * notch);
    view.closeSubpath();
    return view;
}

FigureScene farFocus(double phase) {
    const QPainterPath view = fieldGlasses();
    QPainterPath around = view;
    around.addRect(0, 0, FigureScene::kSide, FigureScene::kSide);
    constexpr double kSteps = 240;  // clouds are in no hurry
    const double drift = std::floor(phase * kSteps) / kSteps;
    FigureScene scene;
    for (const auto& [start, y, size] : {std::tuple(0.0, 66.0, 1.0), std::tuple(0.5, 76.0, 0.75)}) {
        const double x = 220 * (drift + start - std::floor(drift + start)) - 10;
        scene.fill(cloud({x, y}, size), Ink::kFaint);
    }
    scene.fill(mountains(), Ink::kSoft);
    // Snow on the farthest summit, where the eyes rest.
    scene.fill(polyline({{84, 72}, {96, 88}, {89, 86}, {83, 91}, {78, 86}, {73.5, 86}}),
               Ink::kSolid);
    QPainterPath meadow(QPointF(0, 140));
    meadow.cubicTo(60, 118, 110, 150, 200, 128);
    meadow.lineTo(200, 200);
    meadow.lineTo(0, 200);
    meadow.closeSubpath();
    scene.fill(meadow, 0.38);
    scene.fill(around, Ink::kNone);
    scene.line(view, kLine, Ink::kSolid);
    return scene;
}

// One of two hands, cupped over an eye; `side` is -1 for the one on the left.
void addCuppedHand(FigureScene& scene, double side, QPointF offset) {
    constexpr double kFinger = 9.4;
    constexpr double kGap = 3.4;
    const auto on = [&](double x, double y) {
        return QPointF(100 + side * (x + offset.x()), y + offset.y());
    };
    const QPainterPath palm = polyline({on(34, 120), on(25, 106)});
    const QPainterPath forearm = polyline({on(36, 124), on(58, 196)});
    QPainterPath fingers;
    for (const auto& [x, y] : {std::pair(35.5, 70.0), std::pair(26.0, 63.0), std::pair(16.2, 62.0),
                               std::pair(7.2, 70.0)}) {
        fingers.moveTo(on(x, y));
        fingers.lineTo(on(24 + (x - 22) * 0.75, 108));
    }
    scene.line(forearm, 21 + 2 * kGap, Ink::kNone);
    scene.line(palm, 30 + 2 * kGap, Ink::kNone);
    scene.line(fingers, kFinger + 2 * kGap, Ink::kNone);
    scene.line(forearm, 21, Ink::kSolid);
    scene.line(palm, 30, Ink::kSolid);
    scene.line(fingers, kFinger, Ink::kSolid);
    // Where the fingers lie side by side.
    QPainterPath between;
    for (const auto& [x, y] :
         {std::pair(31.0, 76.0), std::pair(21.2, 74.0), std::pair(11.8, 78.0)}) {
        between.moveTo(on(x, y));
        between.lineTo(on(24 + (x - 22) * 0.85, 98));
    }
    scene.line(between, 1.8, Ink::kNone);
}

FigureScene palming(double phase) {
    constexpr double kUp = 0.14;
    constexpr double kDown = 0.9;
    const double away = phase < 0.5 ? between(1, 0, 0, kUp, phase) : between(0, 1, kDown, 1, phase);
    // In steps too small to be seen, so that nothing is drawn in between.
    constexpr double kStep = 0.15;
    const double breath = kStep * std::round(1.5 * wave(phase, 3) * (1 - away) / kStep);
    FigureScene scene;
    scene.fadeBelow(152);
    QPainterPath shoulders(QPointF(20, 214));
    shoulders.cubicTo(24, 168 - breath, 70, 172 - breath, 86, 152);
    shoulders.lineTo(114, 152);
    shoulders.cubicTo(130, 172 - breath, 176, 168 - breath, 180, 214);
    shoulders.closeSubpath();
    scene.fill(shoulders, Ink::kSoft);
    scene.line(polyline({{100, 120}, {100, 156}}), 30, Ink::kSoft);
    QPainterPath head;
    head.addEllipse(QPointF(100, 82 - breath * 0.6), 44, 52);
    scene.line(head, 7, Ink::kNone);
    scene.fill(head, Ink::kSolid);
    for (const double side : {-1.0, 1.0}) {
        scene.line(arc({100 + side * 19, 80}, 9, 6, 200, 140), 3.6, Ink::kNone);
    }
    scene.line(arc({100, 112}, 9, 6, 210, 120), 3.6, Ink::kNone);
    for (const double side : {-1.0, 1.0}) {
        addCuppedHand(scene, side, {26 * away, 40 * away - breath * 0.6});
    }
    return scene;
}

// Gerono's figure eight, lying.
QPointF onEight(double phase) {
    return {100 + 76 * std::sin(kTurn * phase), 132 + 34 * std::sin(2 * kTurn * phase)};
}

FigureScene figureEight(double phase) {
    constexpr int kSteps = 72;
    constexpr double kTail = 0.16;
    FigureScene scene;
    QPainterPath eight(onEight(0));
    for (int i = 1; i <= kSteps; ++i) {
        eight.lineTo(onEight(static_cast<double>(i) / kSteps));
    }
    scene.line(eight, kLine, Ink::kFaint);
    QPainterPath tail(onEight(phase - kTail));
    constexpr int kTailSteps = kSteps / 4;
    for (int i = 1; i <= kTailSteps; ++i) {
        tail.lineTo(onEight(phase - kTail + kTail * i / kTailSteps));
    }
    scene.line(tail, kLine, Ink::kSoft);
    const QPointF dot = onEight(phase);
    scene.fill(disc(dot, 10.5), Ink::kSolid);
    const QPointF gaze((dot.x() - 100) / 76, (dot.y() - 100) / 66);
    for (const double x : {66.0, 134.0}) {
        addEye(scene, {{x, 50}, 26, 0.95, gaze, 5});
    }
    return scene;
}

FigureScene slowBlinks(double phase) {
    FigureScene scene;
    const double open =
        phase < 0.5 ? between(1, 0, 0.12, 0.32, phase) : between(0, 1, 0.62, 0.85, phase);
    const Eye eye{{100, 112}, 80, open, {0, 0}, 7};
    addEye(scene, eye);
    addLashes(scene, eye);
    return scene;
}

// Four corners around what the eyes are on.
void addFinder(FigureScene& scene, QPointF middle, double halfWidth, double halfHeight) {
    constexpr double kArm = 10;
    for (const double x : {-1.0, 1.0}) {
        for (const double y : {-1.0, 1.0}) {
            const QPointF corner = middle + QPointF(x * halfWidth, y * halfHeight);
            QPainterPath bracket(corner - QPointF(0, y * kArm));
            bracket.quadTo(corner, corner - QPointF(x * kArm, 0));
            addThin(scene, bracket, Ink::kSolid);
        }
    }
}

FigureScene nearFar(double phase) {
    FigureScene scene;
    scene.look({100, 105}, 1.0);
    scene.fadeBelow(174, 18);
    const double far =
        phase < 0.5 ? between(0, 1, 0.36, 0.5, phase) : between(1, 0, 0.86, 1.0, phase);
    const double farInk = 0.3 + 0.7 * far;
    const double nearInk = 1.0 - 0.7 * far;

    QPainterPath hill(QPointF(12, 116));
    hill.cubicTo(60, 112, 100, 92, 142, 92);
    hill.cubicTo(164, 92, 178, 102, 190, 108);
    addThin(scene, hill, 0.26 + 0.3 * far);
    scene.line(polyline({{142, 90}, {142, 62}}), 5, farInk);
    scene.fill(disc({142, 46}, 18), farInk);

    // A thumb held up, with its nail.
    QPainterPath thumb(QPointF(46, 200));
    thumb.cubicTo(46, 168, 42, 150, 44, 128);
    thumb.cubicTo(46, 100, 86, 100, 88, 128);
    thumb.cubicTo(90, 150, 88, 168, 94, 200);
    thumb.closeSubpath();
    scene.line(thumb, 6, Ink::kNone);
    scene.fill(thumb, nearInk);
    scene.line(arc({66, 134}, 13, 16, 205, -230), 3.4, Ink::kNone);
    scene.line(polyline({{56, 170}, {77, 170}}), 3.4, Ink::kNone);
    addFinder(scene, {66 + 76 * far, 138 - 78 * far}, 36 - 4 * far, 38);
    return scene;
}

FigureScene daylight(double phase) {
    FigureScene scene;
    addGround(scene, 12, 190);
    QPainterPath window(QPointF(94, 140));
    window.lineTo(94, 66);
    window.arcTo(QRectF(94, 22, 88, 88), 180, -180);
    window.lineTo(182, 140);
    window.closeSubpath();
    QPainterPath light = polyline({{100, 150}, {178, 150}, {148, 188}, {56, 188}});
    light.closeSubpath();
    scene.fill(light, 0.12 + 0.06 * wave(phase));
    QPainterPath hill(QPointF(80, 128));
    hill.cubicTo(120, 96, 150, 124, 200, 108);
    hill.lineTo(200, 200);
    hill.lineTo(80, 200);
    hill.closeSubpath();
    scene.fill(hill, Ink::kFaint, window);
    addThin(scene, polyline({{138, 24}, {138, 138}}), Ink::kSoft);
    addThin(scene, polyline({{96, 98}, {180, 98}}), Ink::kSoft);
    const QPointF sun(138, 68);
    scene.fill(disc(sun, 35), Ink::kNone);
    scene.fill(disc(sun, 14), Ink::kSolid);
    for (int i = 0; i < 8; ++i) {
        const double angle = kTurn * (i + phase) / 8;
        const QPointF ray(std::cos(angle), std::sin(angle));
        const double reach = 28.5 + 2 * wave(phase + i * 0.5, 2);
        addThin(scene, polyline({sun + ray * 21, sun + ray * reach}), Ink::kSolid);
    }
    scene.line(window, kLine - 1, Ink::kSolid);
    scene.line(polyline({{86, 142}, {190, 142}}), kLine, Ink::kSolid);
    scene.look({150, 100}, 1.0);
    BodyFigure::addTo(scene, BodyMotions::kDaylight.at(phase), BodyMotions::kDaylight.view);
    return scene;
}

constexpr GuideFigure kFigures[] = {
    {"far_focus", 40, 0.1, farFocus},        {"palming", 16, 0.45, palming},
    {"figure_eight", 10, 0.08, figureEight}, {"slow_blinks", 7, 0.0, slowBlinks},
    {"near_far", 8, 0.2, nearFar},           {"daylight", 12, 0.25, daylight},
};

}  // namespace

std::span<const GuideFigure> eyeFigures() {
    return kFigures;
}

}  // namespace ostrel
