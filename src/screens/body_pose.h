#pragma once

#include <QPointF>
#include <array>
#include <initializer_list>
#include <utility>

namespace ostrel {

class FigureScene;

// Where a drawn person has what, on the sheet of a FigureScene. From the front, left is the left of
// the sheet; in profile the person looks to the right, and the left limbs are the far ones.
enum class Joint {
    head,  // its middle
    neck,
    shoulders,  // how far they are drawn from where they hang
    breath,     // x: how much wider the chest is
    hips,
    leftHand,
    rightHand,
    leftPalm,  // from the wrist to the fingertips, where they do not go on as the arm does
    rightPalm,
    leftFoot,  // the ankle
    rightFoot,
    leftToe,  // from the ankle
    rightToe,
    elbows,  // which way the left (x) and the right one (y) bend: 1 is to the left of a limb that
    knees,   // hangs, -1 to its right
};
inline constexpr std::size_t kJoints = 15;

class BodyPose {
  public:
    using Change = std::pair<Joint, QPointF>;

    [[nodiscard]] constexpr QPointF at(Joint joint) const {
        return points_[static_cast<std::size_t>(joint)];
    }
    [[nodiscard]] constexpr BodyPose with(std::initializer_list<Change> changes) const {
        BodyPose pose = *this;
        for (const auto& [joint, point] : changes) {
            pose.points_[static_cast<std::size_t>(joint)] = point;
        }
        return pose;
    }
    // The sum of `poses`, each with its weight.
    [[nodiscard]] static BodyPose blend(
        std::initializer_list<std::pair<const BodyPose&, double>> poses);

  private:
    std::array<QPointF, kJoints> points_{};
};

// A person in one of two views. Bones keep their length as far as the pose lets them.
class BodyFigure {
  public:
    enum class View { front, profile };

    // Adds it to the scene, the far limbs first.
    static void addTo(FigureScene& scene, const BodyPose& pose, View view);
};

}  // namespace ostrel
