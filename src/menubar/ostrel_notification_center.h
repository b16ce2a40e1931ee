#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "base/clock.h"
#include "base/subscription.h"
#include "core/engine/engine_ports.h"
#include "platform/api/system_notifications.h"
#include "records/record_announcements.h"

namespace ostrel {

class SettingsStore;

// The one owner of the program's system notifications: posts them, withdraws them, and turns what
// the user answers into calls. There is one of each kind at a time; a newer one replaces it.
class OstrelNotificationCenter : public BreakNotifying,
                                 public SkipStreakNotifying,
                                 public DayEndNotifying {
  public:
    // What the user's answers do.
    struct Answers {
        std::function<void(BreakLogEntry::Kind)> startNow;
        std::function<void(BreakLogEntry::Kind)> postpone;
        std::function<void()> resume;
        std::function<void()> openReport;
        std::function<void()> openApp;
    };

    // What the center works with. All of it outlives the center.
    struct Services {
        SystemNotifications& center;
        const SettingsStore& settingsStore;
        NowFunction now;
    };

    explicit OstrelNotificationCenter(Services services);
    OstrelNotificationCenter(const OstrelNotificationCenter&) = delete;
    OstrelNotificationCenter& operator=(const OstrelNotificationCenter&) = delete;
    ~OstrelNotificationCenter() override;

    // From now on the user's answers are heard, and the weekly summary follows its setting.
    void start(Answers answers);

    [[nodiscard]] SystemNotifications::Authorization authorization() const {
        return services_.center.authorization();
    }

    void postBreakSoon(BreakLogEntry::Kind kind, std::int64_t leadSec, bool canPostpone) override;
    void cancelBreakSoon() override;
    void schedulePauseForgotten(WallTime fireAt) override;
    void restorePauseForgotten(WallTime fireAt) override { pauseForgottenAt_ = fireAt; }
    void cancelPauseForgotten() override;
    void postSkipStreak(std::int64_t count) override;
    void postDayEnd(std::int64_t completed, std::int64_t goal) override;

  private:
    void registerCategories();
    void applySettings();
    void scheduleWeeklySummary();
    void handle(const NotificationResponse& response);
    void handleBreak(std::string_view action, std::string_view kindName);
    void withdraw(std::string_view requestID);

    Services services_;
    Answers answers_;
    bool didRegisterCategories_ = false;
    bool isWeeklyScheduled_ = false;
    bool isPauseForgottenOn_;
    std::optional<WallTime> pauseForgottenAt_;
    Subscription settingsChanges_;
    Subscription responses_;
};

}  // namespace ostrel
