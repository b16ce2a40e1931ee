#include "screens/guide_body_poses.h"

#include <cstddef>

#include "base/fatal.h"
#include "screens/figure_parts.h"

namespace ostrel {
namespace {

using enum Joint;
using Key = BodyMotion::Key;
using Course = BodyMotion::Course;
using View = BodyFigure::View;

// At ease, on the ground at y = 191.
constexpr BodyPose kFront = BodyPose().with({{head, {100, 40}},
                                             {neck, {100, 62}},
                                             {hips, {100, 106}},
                                             {leftHand, {78, 122}},
                                             {rightHand, {122, 122}},
                                             {leftFoot, {91, 182}},
                                             {rightFoot, {109, 182}},
                                             {leftToe, {-6, 2}},
                                             {rightToe, {6, 2}},
                                             {elbows, {0.7, -0.7}},
                                             {knees, {0.3, -0.3}}});
constexpr BodyPose kProfile = BodyPose().with({{head, {101.5, 40}},
                                               {neck, {100, 62}},
                                               {hips, {100, 106}},
                                               {leftHand, {108, 121}},
                                               {rightHand, {104, 123}},
                                               {leftFoot, {99, 181}},
                                               {rightFoot, {98, 182}},
                                               {leftToe, {14, 3}},
                                               {rightToe, {14, 2}},
                                               {elbows, {1, 1}},
                                               {knees, {-0.6, -0.6}}});

constexpr BodyPose kHeadLeft = kFront.with({{head, {86, 44}}});
constexpr BodyPose kHeadRight = kFront.with({{head, {114, 44}}});
constexpr BodyPose kHeadDown = kFront.with({{head, {100, 55}}});
constexpr Key kNeckRollKeys[] = {
    {0.00, kHeadLeft}, {0.25, kHeadDown}, {0.50, kHeadRight}, {0.75, kHeadDown}};

constexpr Key kShoulderRollKeys[] = {
    {0.00, kFront.with({{shoulders, {3, 0}}})},
    {0.25, kFront.with({{shoulders, {0, -9}}, {leftHand, {78, 114}}, {rightHand, {122, 114}}})},
    {0.50, kFront.with({{shoulders, {-3, -2}}})},
    {0.75, kFront.with({{shoulders, {0, 4}}, {leftHand, {78, 126}}, {rightHand, {122, 126}}})},
};

constexpr BodyPose kArmsBefore = kFront.with({{leftHand, {94, 104}}, {rightHand, {106, 104}}});
constexpr BodyPose kArmsOpen = kFront.with({{head, {100, 35}},
                                            {neck, {100, 60}},
                                            {breath, {2, 0}},
                                            {leftHand, {28, 58}},
                                            {rightHand, {172, 58}},
                                            {leftPalm, {-3, -7}},
                                            {rightPalm, {3, -7}},
                                            {elbows, {-0.4, 0.4}}});
constexpr Key kChestOpenerKeys[] = {{0.00, kArmsBefore}, {0.40, kArmsOpen}, {0.72, kArmsOpen}};

constexpr BodyPose kLeanLeft = kFront.with({{head, {67, 50}},
                                            {neck, {82, 66}},
                                            {hips, {103, 106}},
                                            {leftHand, {86, 104}},
                                            {rightHand, {63, 27}},
                                            {elbows, {1, 1}},
                                            {knees, {0.3, -0.3}}});
constexpr BodyPose kLeanRight = kFront.with({{head, {133, 50}},
                                             {neck, {118, 66}},
                                             {hips, {97, 106}},
                                             {leftHand, {137, 27}},
                                             {rightHand, {114, 104}},
                                             {elbows, {-1, -1}},
                                             {knees, {0.3, -0.3}}});
constexpr Key kSideStretchKeys[] = {
    {0.00, kFront}, {0.16, kLeanLeft},  {0.36, kLeanLeft},
    {0.50, kFront}, {0.66, kLeanRight}, {0.86, kLeanRight},
};

constexpr BodyPose kHolding =
    kProfile.with({{leftHand, {146, 93}}, {rightHand, {147, 94}}, {elbows, {0.5, 0.5}}});
constexpr BodyPose kOnToes = kHolding.with({{head, {103.5, 26}},
                                            {neck, {102, 48}},
                                            {hips, {101, 92}},
                                            {leftHand, {146, 93}},
                                            {rightHand, {147, 94}},
                                            {leftFoot, {103, 168}},
                                            {rightFoot, {102, 169}},
                                            {leftToe, {10, 16}},
                                            {rightToe, {10, 15}}});
constexpr Key kCalfRaiseKeys[] = {
    {0.00, kHolding}, {0.40, kOnToes}, {0.55, kOnToes}, {0.95, kHolding}};

constexpr BodyPose akimbo(QPointF hipsAt, QPointF neckAt) {
    return kFront.with({{head, neckAt - QPointF(0, 22)},
                        {neck, neckAt},
                        {hips, hipsAt},
                        {leftHand, hipsAt + QPointF(-16, -6)},
                        {rightHand, hipsAt + QPointF(16, -6)},
                        {leftFoot, {80, 182}},
                        {rightFoot, {120, 182}},
                        {elbows, {1, -1}}});
}
constexpr Key kHipCircleKeys[] = {{0.00, akimbo({90, 107}, {103, 62})},
                                  {0.25, akimbo({100, 110}, {100, 63})},
                                  {0.50, akimbo({110, 107}, {97, 62})},
                                  {0.75, akimbo({100, 104}, {100, 61})}};

constexpr BodyPose prayer(double wristY) {
    return kFront.with({{leftHand, {94.5, wristY}},
                        {rightHand, {105.5, wristY}},
                        {leftPalm, {1, -18}},
                        {rightPalm, {-1, -18}},
                        {elbows, {1, -1}}});
}
constexpr Key kWristStretchKeys[] = {{0.00, prayer(84)}, {0.30, prayer(98)}, {0.75, prayer(98)}};

struct Step {
    QPointF foot;
    QPointF toe;
};
constexpr BodyPose walking(const Step& right, const Step& left, double hipsY, QPointF farHand) {
    return kProfile.with({{head, {104, 40}},
                          {neck, {101, 62}},
                          {hips, {100, hipsY}},
                          {rightHand, {135, 88}},
                          {leftHand, farHand},
                          {rightFoot, right.foot},
                          {rightToe, right.toe},
                          {leftFoot, left.foot},
                          {leftToe, left.toe}});
}
// A foot from when it is put down.
constexpr Step kHeelDown{{124, 180}, {13, -3}};
constexpr Step kFlat{{112, 182}, {14, 2}};
constexpr Step kBelow{{100, 182}, {14, 2}};
constexpr Step kBehind{{88, 182}, {14, 2}};
constexpr Step kToesDown{{76, 176}, {11, 9}};
constexpr Step kLifted{{74, 166}, {8, 12}};
constexpr Step kPassing{{92, 165}, {13, 6}};
constexpr Step kReaching{{113, 172}, {14, 0}};
constexpr Key kWaterWalkKeys[] = {
    {0.000, walking(kHeelDown, kToesDown, 108, {116, 112})},
    {0.125, walking(kFlat, kLifted, 107, {110, 117})},
    {0.250, walking(kBelow, kPassing, 105, {100, 120})},
    {0.375, walking(kBehind, kReaching, 106, {90, 118})},
    {0.500, walking(kToesDown, kHeelDown, 108, {84, 114})},
    {0.625, walking(kLifted, kFlat, 107, {90, 118})},
    {0.750, walking(kPassing, kBelow, 105, {100, 120})},
    {0.875, walking(kReaching, kBehind, 106, {110, 117})},
};

constexpr BodyPose kFootUp = kHolding.with({{rightFoot, {76, 126}},
                                            {rightToe, {-11, -2}},
                                            {rightHand, {71, 121}},
                                            {leftFoot, {101, 182}},
                                            {leftToe, {14, 2}},
                                            {elbows, {0.5, 0.3}},
                                            {knees, {-0.6, -1}}});
constexpr BodyPose kHeelAtSeat =
    kFootUp.with({{rightFoot, {79, 117}}, {rightToe, {-11, -6}}, {rightHand, {71, 111}}});
constexpr Key kQuadStretchKeys[] = {{0.00, kFootUp}, {0.35, kHeelAtSeat}, {0.75, kHeelAtSeat}};

constexpr BodyPose kEmptyOfAir = kProfile.with(
    {{breath, {1, 0}}, {leftHand, {96, 121}}, {rightHand, {96, 121}}, {elbows, {0.6, 0.6}}});
constexpr BodyPose kFullOfAir = kEmptyOfAir.with({{head, {100, 37}},
                                                  {neck, {98, 60}},
                                                  {breath, {9.5, 0}},
                                                  {leftHand, {90, 120}},
                                                  {rightHand, {90, 120}}});
constexpr Key kDeepBreathKeys[] = {{0.00, kEmptyOfAir}, {0.40, kFullOfAir}, {1.00, kEmptyOfAir}};

constexpr BodyPose kLookingUp =
    kProfile.with({{head, {102, 40}}, {leftHand, {98, 122}}, {rightHand, {101, 123}}});
constexpr Key kDaylightKeys[] = {
    {0.0, kLookingUp},
    {0.5, kLookingUp.with({{head, {103, 39}}, {breath, {2, 0}}, {shoulders, {0, -1}}})}};

}  // namespace

BodyPose BodyMotion::at(double phase) const {
    const std::size_t count = keys.size();
    if (count == 0) {
        fatal("a motion has no pose");
    }
    std::size_t next = 0;
    while (next < count && keys[next].phase <= phase) {
        ++next;
    }
    const Key& from = keys[(next + count - 1) % count];
    const Key& to = keys[next % count];
    const double length = (next < count ? to.phase : to.phase + 1.0) - from.phase;
    const double t = length > 0 ? (phase - from.phase) / length : 0.0;
    if (course == Course::resting) {
        const double share = FigureParts::eased(t);
        return BodyPose::blend({{from.pose, 1.0 - share}, {to.pose, share}});
    }
    // A Catmull-Rom spline.
    const Key& before = keys[(next + count - 2) % count];
    const Key& after = keys[(next + 1) % count];
    return BodyPose::blend({{before.pose, t * (-0.5 + t * (1.0 - 0.5 * t))},
                            {from.pose, 1.0 + t * t * (-2.5 + 1.5 * t)},
                            {to.pose, t * (0.5 + t * (2.0 - 1.5 * t))},
                            {after.pose, t * t * (-0.5 + 0.5 * t)}});
}

namespace BodyMotions {

constinit const BodyMotion kNeckRolls{View::front, Course::flowing, kNeckRollKeys};
constinit const BodyMotion kShoulderRolls{View::front, Course::flowing, kShoulderRollKeys};
constinit const BodyMotion kChestOpener{View::front, Course::resting, kChestOpenerKeys};
constinit const BodyMotion kSideStretch{View::front, Course::resting, kSideStretchKeys};
constinit const BodyMotion kCalfRaises{View::profile, Course::resting, kCalfRaiseKeys};
constinit const BodyMotion kHipCircles{View::front, Course::flowing, kHipCircleKeys};
constinit const BodyMotion kWristStretch{View::front, Course::resting, kWristStretchKeys};
constinit const BodyMotion kWaterWalk{View::profile, Course::flowing, kWaterWalkKeys};
constinit const BodyMotion kQuadStretch{View::profile, Course::resting, kQuadStretchKeys};
constinit const BodyMotion kDeepBreaths{View::profile, Course::resting, kDeepBreathKeys};
constinit const BodyMotion kDaylight{View::profile, Course::resting, kDaylightKeys};

}  // namespace BodyMotions

}  // namespace ostrel
