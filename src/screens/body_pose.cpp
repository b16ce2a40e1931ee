#include "screens/body_pose.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "screens/figure_scene.h"

namespace ostrel {
namespace {

using Ink = FigureScene::Ink;

constexpr double kLimb = 9.5;  // the stroke of everything
constexpr double kNeck = 11.0;
constexpr double kTrunk = 16.5;  // of the body in profile
constexpr double kGap = 2.4;
constexpr double kArmBone = 28.0;
constexpr double kLegBone = 38.5;
constexpr double kShoulderHalf = 16.0;
constexpr double kHipHalf = 8.0;
constexpr double kShoulderDrop = 7.0;

double lengthOf(QPointF v) {
    return std::hypot(v.x(), v.y());
}
QPointF unit(QPointF v) {
    const double length = lengthOf(v);
    return length > 0 ? v / length : QPointF(0, 1);
}
// A quarter turn: what points down turns to the left.
QPointF turned(QPointF v) {
    return {-v.y(), v.x()};
}

// Two bones of one length from `root` to `end`, bent to one side.
QPointF middleJoint(QPointF root, QPointF end, double bone, double bend) {
    const double half = lengthOf(end - root) / 2;
    const double height = std::sqrt(std::max(bone * bone - half * half, 0.0));
    return (root + end) / 2 + turned(unit(end - root)) * height * bend;
}

// A bent line whose corner is a little rounded.
QPainterPath limb(QPointF root, QPointF joint, QPointF end) {
    constexpr double kRounding = 0.3;
    QPainterPath path(root);
    path.lineTo(joint + (root - joint) * kRounding);
    path.quadTo(joint, joint + (end - joint) * kRounding);
    path.lineTo(end);
    return path;
}

class Drawing {
  public:
    Drawing(FigureScene& scene, const BodyPose& pose, BodyFigure::View view)
        : scene_(scene), pose_(pose), isFront_(view == BodyFigure::View::front) {
        spine_ = unit(at(Joint::hips) - at(Joint::neck));
        across_ = turned(spine_);  // to the left of one who stands
    }

    void addFront() {
        addLeg(1, Joint::leftFoot, Joint::leftToe, at(Joint::knees).x(), Ink::kSolid);
        addLeg(-1, Joint::rightFoot, Joint::rightToe, at(Joint::knees).y(), Ink::kSolid);
        addChest();
        addArm(1, Joint::leftHand, Joint::leftPalm, at(Joint::elbows).x(), Ink::kSolid);
        addArm(-1, Joint::rightHand, Joint::rightPalm, at(Joint::elbows).y(), Ink::kSolid);
        addHead();
    }

    void addProfile() {
        addArm(0, Joint::leftHand, Joint::leftPalm, at(Joint::elbows).x(), Ink::kSoft);
        addLeg(0, Joint::leftFoot, Joint::leftToe, at(Joint::knees).x(), Ink::kSoft);
        addLeg(0, Joint::rightFoot, Joint::rightToe, at(Joint::knees).y(), Ink::kSolid);
        addTrunk();
        addArm(0, Joint::rightHand, Joint::rightPalm, at(Joint::elbows).y(), Ink::kSolid);
        addHead();
    }

  private:
    [[nodiscard]] QPointF at(Joint joint) const { return pose_.at(joint); }

    // `side` is 1 for the left, -1 for the right, 0 where both are one behind the other.
    [[nodiscard]] QPointF shoulder(double side) const {
        const QPointF lift = at(Joint::shoulders);
        const double half = kShoulderHalf + at(Joint::breath).x();
        return at(Joint::neck) + spine_ * kShoulderDrop + across_ * half * side +
               QPointF(side == 0 ? lift.x() : -lift.x() * side, lift.y());
    }
    [[nodiscard]] QPointF hip(double side) const {
        return at(Joint::hips) + across_ * kHipHalf * side;
    }

    // Its flanks follow the legs below and the neck above, so that a lean is a curve.
    void addChest() {
        const double half = lengthOf(at(Joint::neck) - at(Joint::hips)) / 2;
        const double width = 2 + at(Joint::breath).x();
        QPainterPath chest(shoulder(1));
        chest.quadTo(hip(1) - QPointF(width, half), hip(1));
        chest.lineTo(hip(-1));
        chest.quadTo(hip(-1) - QPointF(-width, half), shoulder(-1));
        chest.quadTo(at(Joint::neck) + spine_ * 1.5, shoulder(1));
        chest.closeSubpath();
        scene_.fill(chest, Ink::kSolid);
        scene_.line(chest, kLimb, Ink::kSolid);
    }

    void addTrunk() {
        const double breath = at(Joint::breath).x();
        const QPointF top = at(Joint::neck) + spine_ * kShoulderDrop + at(Joint::shoulders);
        const QPointF bottom = at(Joint::hips) - spine_ * 2;
        QPainterPath back(top);
        back.quadTo((top + bottom) / 2 + across_ * 2.5, bottom);
        scene_.line(back, kTrunk, Ink::kSolid);
        QPainterPath chest(top - across_ * breath * 0.8);
        chest.quadTo((top + bottom) / 2 - across_ * breath * 1.5, bottom);
        scene_.line(chest, kTrunk, Ink::kSolid);
    }

    void addHead() {
        const QPointF middle = at(Joint::head);
        const QPointF up = unit(middle - at(Joint::neck));
        QPainterPath head;
        head.setFillRule(Qt::WindingFill);
        head.addEllipse(QPointF(), isFront_ ? 11.0 : 12.0, 13.2);
        if (!isFront_) {
            QPainterPath nose(QPointF(10.0, -3.5));
            nose.quadTo(QPointF(12.5, 0.5), QPointF(15.2, 3.2));
            nose.quadTo(QPointF(14.5, 5.2), QPointF(10.0, 5.5));
            nose.closeSubpath();
            head.addPath(nose);
        }
        QTransform place = QTransform::fromTranslate(middle.x(), middle.y());
        place.rotateRadians(std::atan2(up.x(), -up.y()));
        // Apart from an arm behind it and from the chest beneath it, but not from its own neck.
        scene_.line(place.map(head), 2 * kGap, Ink::kNone);
        QPainterPath neck(at(Joint::neck) - spine_);
        neck.lineTo(middle);
        scene_.line(neck, isFront_ ? kNeck : kLimb, Ink::kSolid);
        scene_.fill(place.map(head), Ink::kSolid);
    }

    void addArm(double side, Joint hand, Joint palm, double bend, double ink) {
        const QPointF root = shoulder(side);
        const QPointF elbow = middleJoint(root, at(hand), kArmBone, bend);
        const QPointF fingertips = at(hand) + at(palm);
        QPainterPath path = limb(root, elbow, at(hand));
        path.lineTo(fingertips);
        QPainterPath forearm(elbow + (at(hand) - elbow) * 0.3);
        forearm.lineTo(at(hand));
        forearm.lineTo(fingertips);
        // The near arm stands out from what it is held before.
        if (ink == Ink::kSolid) {
            scene_.line(forearm, kLimb + 2 * kGap, Ink::kNone);
        }
        scene_.line(path, kLimb, ink);
    }

    void addLeg(double side, Joint foot, Joint toe, double bend, double ink) {
        const QPointF root = hip(side);
        QPainterPath path = limb(root, middleJoint(root, at(foot), kLegBone, bend), at(foot));
        path.lineTo(at(foot) + at(toe));
        scene_.line(path, kLimb, ink);
    }

    FigureScene& scene_;
    const BodyPose& pose_;
    const bool isFront_;
    QPointF spine_;
    QPointF across_;
};

}  // namespace

BodyPose BodyPose::blend(std::initializer_list<std::pair<const BodyPose&, double>> poses) {
    BodyPose sum;
    for (const auto& [pose, weight] : poses) {
        for (std::size_t i = 0; i < kJoints; ++i) {
            sum.points_[i] += pose.points_[i] * weight;
        }
    }
    return sum;
}

void BodyFigure::addTo(FigureScene& scene, const BodyPose& pose, View view) {
    Drawing drawing(scene, pose, view);
    if (view == View::front) {
        drawing.addFront();
    } else {
        drawing.addProfile();
    }
}

}  // namespace ostrel
