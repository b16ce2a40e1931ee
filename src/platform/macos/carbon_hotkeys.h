#pragma once

#include <memory>

#include "platform/api/global_hotkeys.h"

namespace ostrel {

// Chords that the system itself delivers, by the place of the key. Needs no permission.
//
// Null also for chords of option alone, or of option and shift, on the releases that refuse them.
class CarbonHotkeys : public GlobalHotkeys {
  public:
    CarbonHotkeys();
    CarbonHotkeys(const CarbonHotkeys&) = delete;
    CarbonHotkeys& operator=(const CarbonHotkeys&) = delete;
    ~CarbonHotkeys() override;

    [[nodiscard]] std::unique_ptr<Registration> add(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    std::function<void()> onPress) override;

  private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

}  // namespace ostrel
