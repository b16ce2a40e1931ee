#pragma once

#include <functional>
#include <memory>

#include "base/clock.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// The user's notification centre, which keeps what waits for its time itself.
//
// It exists only for a
// program in a bundle: elsewhere everything is swallowed and the authorisation is denied. To hear
// of the tap that started the program, make this before the application's launch is over.
class UserNotifications : public SystemNotifications {
  public:
    using TranslateText = std::function<std::string(const LocalizedText&)>;

    UserNotifications(TranslateText translate, NowFunction now);
    UserNotifications(const UserNotifications&) = delete;
    UserNotifications& operator=(const UserNotifications&) = delete;
    ~UserNotifications() override;

    // A later call takes the place of an earlier one. The actions have their names in the language
    // in which the next notification comes.
    void registerCategories(std::vector<NotificationCategory> categories) override;

    void add(const NotificationRequest& request) override;
    void removePending(const std::string& id) override;
    void removeDelivered(const std::string& id) override;

    // As last heard; asked anew whenever the user turns to this program.
    [[nodiscard]] Authorization authorization() const override;

  private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

}  // namespace ostrel
