#pragma once

namespace ostrel {

// The desktop's accessibility settings that concern animation.
class MotionSettings {
  public:
    virtual ~MotionSettings() = default;

    // The user asked for as little motion as possible. Cheap: may be asked at every frame.
    [[nodiscard]] virtual bool reduceMotion() const = 0;
};

}  // namespace ostrel
