#pragma once

#include <span>

#include "screens/body_pose.h"

namespace ostrel {

// How a drawn person moves: poses that follow each other round and round.
struct BodyMotion {
    // From one pose to the next with a rest at each, or through them without one. The poses that a
    // flowing motion goes through are equally far apart.
    enum class Course { resting, flowing };

    struct Key {
        double phase = 0;  // 0 to 1, where the pose is reached
        BodyPose pose;
    };

    BodyFigure::View view = BodyFigure::View::front;
    Course course = Course::resting;
    std::span<const Key> keys;

    [[nodiscard]] BodyPose at(double phase) const;
};

// The motions of the guided moves.
namespace BodyMotions {

extern const BodyMotion kNeckRolls;
extern const BodyMotion kShoulderRolls;
extern const BodyMotion kChestOpener;
extern const BodyMotion kSideStretch;
extern const BodyMotion kCalfRaises;
extern const BodyMotion kHipCircles;
extern const BodyMotion kWristStretch;
extern const BodyMotion kWaterWalk;
extern const BodyMotion kQuadStretch;
extern const BodyMotion kDeepBreaths;
extern const BodyMotion kDaylight;

}  // namespace BodyMotions

}  // namespace ostrel
