#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/signal.h"
#include "platform/api/system_notifications.h"

class QDBusMessage;
class QDBusServiceWatcher;

namespace ostrel {

// The session's notification server, whichever it is at the moment, over the Desktop Notifications
// Specification (org.freedesktop.Notifications).
//
// It may be missing, start late, hang, and make room for another at any time; nothing here waits
// for it. Signals of other programs and of earlier servers are not passed on.
class NotificationServer : public QObject {
    Q_OBJECT

  public:
    using Authorization = SystemNotifications::Authorization;
    using Number = quint32;  // what the server calls a notification; 0 is none

    static constexpr QLatin1String kTap{"default"};  // the action of the notification itself

    // Plain texts.
    struct Action {
        QString id;
        QString label;
    };
    struct Note {
        QString title;
        QString body;
        std::vector<Action> actions;
        bool sounds = false;  // the server's sound for a new message
    };

    explicit NotificationServer(const QDBusConnection& bus);

    ~NotificationServer() override;

    // Looks for the server on another bus; that of the bus before is gone.
    void adopt(const QDBusConnection& bus);

    // Looks for a server, and may have the bus start one; `found` or `notFound` follows. Does
    // nothing while that is under way.
    void start();

    // Whether there is a server and it is known what it can do; only then call the next two.
    [[nodiscard]] bool isReady() const { return abilities_.has_value(); }

    // Shows it, instead of the one of number `replaces` if that is still there. `answer` gets its
    // number, or 0 when it failed. A server that hangs answers when it wakes up or dies.
    void notify(const Note& note, Number replaces, std::function<void(Number)> answer);

    void close(Number number);

    [[nodiscard]] Authorization authorization() const { return authorization_; }

    Signal<> found;     // it is ready; also each time that another one took over
    Signal<> notFound;  // after start() only
    Signal<> gone;      // whatever it showed is gone with it, and its numbers mean nothing now
    Signal<Number, const QString&> actionInvoked;
    Signal<Number> closed;

  private:
    struct Abilities {
        bool actions = false;
        bool bodyMarkup = false;
    };
    enum class Activation { allowed, forbidden };
    using Answer = std::function<void(const QDBusMessage&)>;

    Q_SLOT void handleAction(uint number, const QString& action, const QDBusMessage& message);
    Q_SLOT void handleClosed(uint number, uint reason, const QDBusMessage& message);
    void listen();
    void changeOwner(const QString& owner);
    void askForAbilities(Activation activation);
    void takeAbilities(const QDBusMessage& answer);
    void askWhetherOneCanBeStarted();
    void call(const QDBusMessage& message, Answer answer);

    QDBusConnection bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    QString owner_;  // the unique name of the server; empty while none is known
    Authorization authorization_ = Authorization::unknown;
    std::optional<Abilities> abilities_;
    bool isStarting_ = false;
    int question_ = 0;  // the answers to earlier ones do not count
};

}  // namespace ostrel
