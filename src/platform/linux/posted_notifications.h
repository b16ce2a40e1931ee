#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/notification_server.h"

namespace ostrel {

// What has been posted to the notification server: one notification for each identifier of ours.
//
// A second post or a withdrawal waits for the answer to the first, without which the server's
// number of it is not known.
class PostedNotifications {
  public:
    enum class WithoutServer {
        drop,  // late it would be wrong
        wait,  // for a server that starts later
    };

    struct Posting {
        NotificationServer::Note note;
        NotificationResponse tap;  // what a tap on it is answered with
        WithoutServer withoutServer = WithoutServer::drop;
    };

    // `server` outlives this.
    explicit PostedNotifications(NotificationServer& server);
    PostedNotifications(const PostedNotifications&) = delete;
    PostedNotifications& operator=(const PostedNotifications&) = delete;

    void post(const std::string& id, Posting posting);

    // Takes it off the screen, or sees to it that it does not get there.
    void withdraw(const std::string& id);

    // Forgets what still waits for a server.
    void forgetWaiting(const std::string& id);

    // A notification that was answered is closed.
    Signal<const NotificationResponse&> responded;

  private:
    using Number = NotificationServer::Number;

    struct Entry {
        Number number = 0;             // of `shown`
        bool isOpen = false;           // `shown` has not been closed
        std::optional<Posting> shown;  // still answered when it was closed: some say that first
        std::optional<Posting> sent;   // not answered yet
        std::optional<Posting> next;   // not sent yet
        bool isWithdrawn = false;      // `sent` is to be closed as soon as that can be done

        void forgetShown();
    };
    using Entries = std::map<std::string, Entry>;

    void goOn(Entries::iterator entry);
    void takeAnswer(const std::string& id, Number number);
    void goOnWithAll();
    void dropWhatCannotWait();
    void startAnew();
    void respond(Number number, const QString& action);
    void markClosed(Number number);
    [[nodiscard]] Entries::iterator find(Number number);
    void eraseIfEmpty(Entries::iterator entry);

    NotificationServer& server_;
    Entries entries_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
