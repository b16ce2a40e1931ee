#pragma once

#include <QDBusConnection>
#include <QString>
#include <functional>
#include <vector>

#include "platform/api/system_notifications.h"
#include "platform/linux/notification_server.h"
#include "platform/linux/pending_notifications_document.h"
#include "platform/linux/posted_notifications.h"
#include "platform/notifications/notification_schedule.h"

namespace ostrel {

// Notifications over the desktop's notification server, which knows no triggers: what waits for one
// waits here and in a document of the preferences.
//
// The pending requests of earlier runs come back with the first call, so that the categories are
// there when something is overdue. A request that is due while no server can be had waits for one;
// one that was to be shown at once is dropped.
class LinuxNotifications : public SystemNotifications {
  public:
    using TranslateText = std::function<QString(const LocalizedText&)>;

    // What is handed over as a reference outlives this.
    struct Needs {
        RunLoop& runLoop;
        const Calendar& calendar;
        NowFunction now;
        const SystemEvents& events;
        PreferencesStore& preferences;
        TranslateText translate;
    };

    explicit LinuxNotifications(Needs needs,
                                const QDBusConnection& bus = QDBusConnection::sessionBus());

    // From now on over this bus: the one before is gone, with every server on it.
    void adopt(const QDBusConnection& bus) { server_.adopt(bus); }

    void registerCategories(std::vector<NotificationCategory> categories) override;
    void add(const NotificationRequest& request) override;
    void removePending(const std::string& id) override;
    void removeDelivered(const std::string& id) override;

    // Granted once a server has answered, denied when the bus says that there is none and that it
    // can start none.
    [[nodiscard]] Authorization authorization() const override { return server_.authorization(); }

  private:
    void restoreOnce();
    void post(const NotificationRequest& request);
    [[nodiscard]] NotificationServer::Note noteOf(const NotificationRequest& request) const;

    TranslateText translate_;
    std::vector<NotificationCategory> categories_;
    PendingNotificationsDocument document_;
    bool isRestored_ = false;
    NotificationServer server_;
    PostedNotifications posted_;
    NotificationSchedule schedule_;
    Subscription responses_;
    Subscription pendingChanges_;
};

}  // namespace ostrel
