#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/localized_text.h"
#include "base/signal.h"

namespace ostrel {

// A button under a notification.
struct NotificationAction {
    std::string id;
    std::string titleKey;

    bool operator==(const NotificationAction&) const = default;
};

// A kind of notification with its buttons.
struct NotificationCategory {
    std::string id;
    std::vector<NotificationAction> actions;

    bool operator==(const NotificationCategory&) const = default;
};

// So many seconds from now, once; at least 1.
struct AfterSeconds {
    double seconds = 1;

    bool operator==(const AfterSeconds&) const = default;
};

// Every week on that day when the clock shows hour:00, in the zone the user is in then.
struct EveryWeek {
    int weekday = 1;  // 1 = Sunday to 7 = Saturday
    int hour = 0;

    bool operator==(const EveryWeek&) const = default;
};

using NotificationTrigger = std::variant<std::monostate, AfterSeconds, EveryWeek>;

enum class NotificationSound { none, standard };

struct NotificationRequest {
    std::string id;        // a later one of the same id replaces this one, pending or delivered
    std::string category;  // of a registered NotificationCategory
    LocalizedText title;
    LocalizedText body;
    std::map<std::string, std::string> userInfo;
    NotificationTrigger trigger;  // empty: at once
    NotificationSound sound = NotificationSound::none;

    bool operator==(const NotificationRequest&) const = default;
};

// What the user did with a notification.
struct NotificationResponse {
    std::optional<std::string> action;  // absent: a plain tap on the notification itself
    std::string category;
    std::map<std::string, std::string> userInfo;

    bool operator==(const NotificationResponse&) const = default;
};

// The system's notifications. Pending requests are the system's: they survive the program, and what
// fell due while it did not run is delivered once, soon after the next launch. Nothing here waits
// for an answer of the system, and a system without notifications swallows them.
class SystemNotifications {
  public:
    enum class Authorization { unknown, granted, denied };

    virtual ~SystemNotifications() = default;

    // All of them, before the first request.
    virtual void registerCategories(std::vector<NotificationCategory> categories) = 0;

    virtual void add(const NotificationRequest& request) = 0;
    virtual void removePending(const std::string& id) = 0;
    virtual void removeDelivered(const std::string& id) = 0;

    // Whether notifications can reach the user, as far as is known now.
    [[nodiscard]] virtual Authorization authorization() const = 0;

    // On the main thread. A notification whose action was pressed is closed.
    Signal<const NotificationResponse&> responded;
};

}  // namespace ostrel
