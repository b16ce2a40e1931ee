#pragma once

#include <memory>

#include "platform/api/appearance_settings.h"

namespace ostrel {

// Light or dark as this program's windows are drawn, the accessible variants included. Needs the
// shared NSApplication, which QApplication makes.
class ApplicationAppearance : public AppearanceSettings {
  public:
    ApplicationAppearance();
    ApplicationAppearance(const ApplicationAppearance&) = delete;
    ApplicationAppearance& operator=(const ApplicationAppearance&) = delete;
    ~ApplicationAppearance() override;

    [[nodiscard]] std::optional<bool> prefersDark() const override { return prefersDark_; }

  private:
    void read();

    std::optional<bool> prefersDark_;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
