#include "screens/guide_body_figures.h"

#include <cmath>

#include "screens/figure_parts.h"
#include "screens/guide_body_poses.h"

namespace ostrel {
namespace {

using FigureParts::addArrow;
using FigureParts::addGround;
using FigureParts::addThin;
using FigureParts::arc;
using FigureParts::Heads;
using FigureParts::kThin;
using FigureParts::polyline;
using FigureParts::wave;
using Ink = FigureScene::Ink;

void addBody(FigureScene& scene, const BodyMotion& motion, double phase) {
    BodyFigure::addTo(scene, motion.at(phase), motion.view);
}

// To hold on to by its back.
void addChair(FigureScene& scene) {
    addThin(scene, polyline({{150, 98}, {150, 191}}), Ink::kSoft);
    addThin(scene, polyline({{150, 150}, {178, 150}, {178, 191}}), Ink::kSoft);
}

FigureScene neckRolls(double phase) {
    FigureScene scene;
    scene.look({100, 70}, 1.9);
    scene.fadeBelow(138);
    addBody(scene, BodyMotions::kNeckRolls, phase);
    addArrow(scene, arc({100, 50}, 44, 36, 200, 140), Ink::kSoft, Heads::atBoth);
    return scene;
}

FigureScene shoulderRolls(double phase) {
    FigureScene scene;
    scene.look({100, 68}, 1.7);
    scene.fadeBelow(124);
    for (const double side : {-1.0, 1.0}) {
        addArrow(scene,
                 arc({100 + side * 41, 62}, 9, 9, side > 0 ? 150 - 360 * phase : 30 + 360 * phase,
                     side > 0 ? -260 : 260),
                 Ink::kSoft);
    }
    addBody(scene, BodyMotions::kShoulderRolls, phase);
    return scene;
}

FigureScene chestOpener(double phase) {
    FigureScene scene;
    scene.look({100, 107}, 1.08);
    addGround(scene, 50, 150);
    addBody(scene, BodyMotions::kChestOpener, phase);
    for (const double side : {-1.0, 1.0}) {
        addArrow(scene, polyline({{100 + side * 34, 88}, {100 + side * 62, 84}}), Ink::kSoft);
    }
    return scene;
}

FigureScene sideStretch(double phase) {
    FigureScene scene;
    scene.look({100, 107}, 1.08);
    addGround(scene, 55, 145);
    addBody(scene, BodyMotions::kSideStretch, phase);
    return scene;
}

FigureScene calfRaises(double phase) {
    FigureScene scene;
    scene.look({117, 103}, 1.05);
    addGround(scene, 45, 190);
    addChair(scene);
    addArrow(scene, polyline({{70, 184}, {70, 150}}), Ink::kSoft);
    addBody(scene, BodyMotions::kCalfRaises, phase);
    return scene;
}

FigureScene hipCircles(double phase) {
    FigureScene scene;
    scene.look({100, 108}, 1.08);
    addGround(scene, 50, 150);
    addThin(scene, arc({100, 101}, 46, 13, 0, 180), Ink::kSoft);
    addBody(scene, BodyMotions::kHipCircles, phase);
    const QPainterPath before = arc({100, 101}, 46, 13, 180, 145);
    scene.line(before, kThin + 5, Ink::kNone);
    addArrow(scene, before, Ink::kSoft);
    return scene;
}

FigureScene wristStretch(double phase) {
    FigureScene scene;
    scene.look({100, 72}, 1.7);
    scene.fadeBelow(138);
    addBody(scene, BodyMotions::kWristStretch, phase);
    for (const double side : {-1.0, 1.0}) {
        addArrow(scene, polyline({{100 + side * 46, 72}, {100 + side * 46, 92}}), Ink::kSoft);
    }
    return scene;
}

// A tumbler whose water leans a little with each step.
void addGlass(FigureScene& scene, QPointF foot, double lean) {
    const QPainterPath glass = polyline({foot + QPointF(-7.5, -20), foot + QPointF(-5.5, 0),
                                         foot + QPointF(5.5, 0), foot + QPointF(7.5, -20)});
    QPainterPath water = polyline({foot + QPointF(-7, -13 + lean), foot + QPointF(-5.5, 0),
                                   foot + QPointF(5.5, 0), foot + QPointF(7, -13 - lean)});
    scene.fill(water, Ink::kSoft);
    scene.line(glass, 2.6, Ink::kSolid);
}

FigureScene waterWalk(double phase) {
    FigureScene scene;
    scene.look({100, 108}, 1.08);
    addGround(scene, 40, 160);
    const BodyPose pose = BodyMotions::kWaterWalk.at(phase);
    addBody(scene, BodyMotions::kWaterWalk, phase);
    addGlass(scene, pose.at(Joint::rightHand) + QPointF(7, 7), 1.2 * wave(phase, 2));
    return scene;
}

FigureScene quadStretch(double phase) {
    FigureScene scene;
    scene.look({117, 108}, 1.08);
    addGround(scene, 45, 190);
    addChair(scene);
    addBody(scene, BodyMotions::kQuadStretch, phase);
    return scene;
}

// Air: it comes in over the first two fifths and goes out over the rest.
FigureScene deepBreaths(double phase) {
    constexpr double kIn = 0.4;
    FigureScene scene;
    scene.look({119, 86}, 1.4);
    scene.fadeBelow(152);
    addBody(scene, BodyMotions::kDeepBreaths, phase);
    const double share = phase < kIn ? 1.0 - phase / kIn : (phase - kIn) / (1.0 - kIn);
    for (const double row : {-1.0, 0.0, 1.0}) {
        const double x = 122 + 14 * share + 4 * row * row;
        const double y = 46 + 10 * row;
        QPainterPath air(QPointF(x, y));
        air.cubicTo(QPointF(x + 8, y - 6), QPointF(x + 12, y + 6),
                    QPointF(x + 20 - 4 * row * row, y));
        addThin(scene, air, Ink::kSoft);
    }
    return scene;
}

constexpr GuideFigure kFigures[] = {
    {"neck_rolls", 9, 0.08, neckRolls},      {"shoulder_rolls", 5, 0.25, shoulderRolls},
    {"chest_opener", 8, 0.6, chestOpener},   {"side_stretch", 12, 0.25, sideStretch},
    {"calf_raises", 4, 0.5, calfRaises},     {"hip_circles", 5, 0.0, hipCircles},
    {"wrist_stretch", 8, 0.6, wristStretch}, {"water_walk", 1.8, 0.0, waterWalk},
    {"quad_stretch", 8, 0.6, quadStretch},   {"deep_breaths", 10, 0.3, deepBreaths},
};

}  // namespace

std::span<const GuideFigure> bodyFigures() {
    return kFigures;
}

}  // namespace ostrel
