#pragma once

#include <string_view>
#include <vector>

#include "platform/notifications/notification_schedule.h"

namespace ostrel {

class PreferencesStore;

// The notifications that wait for their trigger, as a document of the preferences.
//
// What cannot be read counts as none. Its bytes stay as they are until the first save, which sets
// them aside.
class PendingNotificationsDocument {
  public:
    using Pending = NotificationSchedule::Pending;

    static constexpr std::string_view kKey = "ostrel.pendingNotifications.v1";

    explicit PendingNotificationsDocument(PreferencesStore& preferences);

    [[nodiscard]] std::vector<Pending> load();
    void save(const std::vector<Pending>& pending);

  private:
    PreferencesStore& preferences_;
    bool isUnreadable_ = false;
};

}  // namespace ostrel
