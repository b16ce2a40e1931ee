#include "platform/linux/linux_notifications.h"

#include <algorithm>
#include <utility>

namespace ostrel {

LinuxNotifications::LinuxNotifications(Needs needs, const QDBusConnection& bus)
    : translate_(std::move(needs.translate)),
      document_(needs.preferences),
      server_(bus),
      posted_(server_),
      schedule_(needs.runLoop, needs.calendar, std::move(needs.now), needs.events,
                [this](const NotificationRequest& request) { post(request); }),
      responses_(posted_.responded.subscribe(
          [this](const NotificationResponse& response) { responded.send(response); })),
      pendingChanges_(
          schedule_.pending().onChange([this](const auto& pending) { document_.save(pending); })) {}

void LinuxNotifications::registerCategories(std::vector<NotificationCategory> categories) {
    categories_ = std::move(categories);
    restoreOnce();
}

void LinuxNotifications::add(const NotificationRequest& request) {
    restoreOnce();
    schedule_.add(request);
}

void LinuxNotifications::removePending(const std::string& id) {
    restoreOnce();
    schedule_.remove(id);
    posted_.forgetWaiting(id);
}

void LinuxNotifications::removeDelivered(const std::string& id) {
    posted_.withdraw(id);
}

void LinuxNotifications::restoreOnce() {
    if (!std::exchange(isRestored_, true)) {
        schedule_.restore(document_.load());
    }
}

void LinuxNotifications::post(const NotificationRequest& request) {
    using WithoutServer = PostedNotifications::WithoutServer;
    const bool wasDue = !std::holds_alternative<std::monostate>(request.trigger);
    posted_.post(request.id, {.note = noteOf(request),
                              .tap = {std::nullopt, request.category, request.userInfo},
                              .withoutServer = wasDue ? WithoutServer::wait : WithoutServer::drop});
}

NotificationServer::Note LinuxNotifications::noteOf(const NotificationRequest& request) const {
    // Some servers offer the tap as a button like the others, and no other way to it.
    NotificationServer::Note note{translate_(request.title),
                                  translate_(request.body),
                                  {{NotificationServer::kTap, QStringLiteral("Ostrel")}}};
    const auto category =
        std::find_if(categories_.begin(), categories_.end(),
                     [&](const NotificationCategory& c) { return c.id == request.category; });
    if (category != categories_.end()) {
        for (const NotificationAction& action : category->actions) {
            note.actions.push_back(
                {QString::fromStdString(action.id), translate_({action.titleKey, {}})});
        }
    }
    note.sounds = request.sound == NotificationSound::standard;
    return note;
}

}  // namespace ostrel
