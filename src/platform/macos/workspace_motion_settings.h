#pragma once

#include <memory>

#include "platform/api/motion_settings.h"

namespace ostrel {

// "Reduce motion" of the accessibility settings, followed as it is switched.
class WorkspaceMotionSettings : public MotionSettings {
  public:
    WorkspaceMotionSettings();
    WorkspaceMotionSettings(const WorkspaceMotionSettings&) = delete;
    WorkspaceMotionSettings& operator=(const WorkspaceMotionSettings&) = delete;
    ~WorkspaceMotionSettings() override;

    [[nodiscard]] bool reduceMotion() const override { return reduceMotion_; }

  private:
    void read();

    bool reduceMotion_ = false;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
