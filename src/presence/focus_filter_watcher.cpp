#include "presence/focus_filter_watcher.h"

#include <algorithm>
#include <string>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"

namespace ostrel {
namespace {

using Announcement = DistributedAnnouncements::Announcement;
using Value = DistributedAnnouncements::Value;

constexpr std::string_view kNames[] = {"com.apple.controlcenter.DoNotDisturbActive",
                                       "com.apple.donotdisturb.notification"};
constexpr std::string_view kKeys[] = {"active", "state", "isActive", "DoNotDisturb"};

// ASCII letters alone: the words it is compared with have no others.
std::string lowerCased(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return text;
}

std::optional<bool> isOn(const Value& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return *number != 0;
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        const std::string word = lowerCased(*text);
        return word == "1" || word == "true" || word == "active";
    }
    return std::nullopt;
}

// The first key with a usable value counts.
std::optional<FocusBehavior> behaviorIn(const Announcement& announcement) {
    for (const std::string_view key : kKeys) {
        const auto found = announcement.userInfo.find(std::string(key));
        const auto on = found == announcement.userInfo.end() ? std::nullopt : isOn(found->second);
        if (on) {
            return *on ? FocusBehavior::on : FocusBehavior::off;
        }
    }
    return std::nullopt;
}

}  // namespace

FocusFilterWatcher::FocusFilterWatcher(Services services)
    : services_(services),
      observers_(
          services_.announcements.announced.subscribe([this](const Announcement& announcement) {
              const bool isAboutIt =
                  std::ranges::find(kNames, announcement.name) != std::end(kNames);
              const auto behavior = isAboutIt ? behaviorIn(announcement) : std::nullopt;
              if (behavior && behavior != *behavior_) {
                  apply(*behavior);
              }
          })) {}

FocusFilterWatcher::~FocusFilterWatcher() = default;

void FocusFilterWatcher::applyAgain() {
    apply(*behavior_);
}

void FocusFilterWatcher::apply(FocusBehavior behavior) {
    behavior_.set(behavior);
    if (!services_.settingsStore.settings()->pauseDuringDND || !services_.timerEngine) {
        return;
    }
    if (behavior == FocusBehavior::on) {
        services_.timerEngine->pause(PauseReason::focus);
    } else {
        services_.timerEngine->endPause(PauseReason::focus);
    }
}

}  // namespace ostrel
