#pragma once

#include <algorithm>
#include <string>
#include <type_traits>

#include "app/simulator/virtual_platform.h"
#include "core/settings/json_record.h"
#include "platform/api/iso_time.h"
#include "support/events.h"

namespace ostrel {

// What a random test comes upon: what was wrong first, with what had led to it, and how often what
// happened.
class Findings {
  public:
    Findings(const VirtualPlatform& platform, Counts& counts)
        : platform_(platform), counts_(counts) {}

    // Empty as long as nothing was wrong.
    [[nodiscard]] const std::string& fault() const { return fault_; }

    void count(const std::string& what) { ++counts_[what]; }
    void note(const std::string& what) { story_.push_back(momentText() + " " + what); }
    void noteAndCount(const std::string& what) {
        note(what);
        count(what);
    }

    template <class T>
    void expect(const char* what, const T& is, const std::type_identity_t<T>& shouldBe) {
        if (is == shouldBe || !fault_.empty()) {
            return;
        }
        fault_ = momentText() + ": " + what + " is " +
                 printJson(is).text.value_or("not printable") + ", should be " +
                 printJson(shouldBe).text.value_or("not printable") + "; before it:";
        const auto shown = std::min<std::ptrdiff_t>(std::ssize(story_), kShownEvents);
        std::for_each(story_.end() - shown, story_.end(),
                      [this](const std::string& event) { fault_ += "\n    " + event; });
    }

  private:
    static constexpr std::ptrdiff_t kShownEvents = 40;

    [[nodiscard]] std::string momentText() const {
        const double at = inSeconds(platform_.runLoop.now().time_since_epoch());
        return Json(at).dump() + " " +
               isoLocalTime(platform_.calendar, platform_.runLoop.wallNow());
    }

    const VirtualPlatform& platform_;
    Counts& counts_;
    Events story_;
    std::string fault_;
};

}  // namespace ostrel
