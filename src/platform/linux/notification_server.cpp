#include "platform/linux/notification_server.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <QVariantMap>
#include <limits>
#include <utility>

#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

constexpr QLatin1String kService("org.freedesktop.Notifications");
constexpr QLatin1String kPath("/org/freedesktop/Notifications");
constexpr QLatin1String kSpawnErrors("org.freedesktop.DBus.Error.Spawn.");

// A notification that appears after we have given up waiting could not be withdrawn. The bus
// answers in place of a server that dies.
constexpr int kUntilAnsweredMs = std::numeric_limits<int>::max();

constexpr int kServerDecidesHowLong = -1;

QDBusMessage callOf(const char* member) {
    return QDBusMessage::createMethodCall(kService, kPath, kService, QLatin1String(member));
}

bool saysThatNoneCanBeStarted(const QDBusMessage& error) {
    const QString name = error.errorName();
    return name == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
           name.startsWith(kSpawnErrors);
}

// What a server answers itself, be it an error, and not the bus in its place.
bool isFromServer(const QDBusMessage& answer) {
    return !answer.service().isEmpty() && answer.service() != kBusService;
}

}  // namespace

NotificationServer::NotificationServer(const QDBusConnection& bus) : bus_(bus) {
    listen();
}

NotificationServer::~NotificationServer() = default;

void NotificationServer::adopt(const QDBusConnection& bus) {
    bus_ = bus;
    ++question_;
    owner_.clear();
    abilities_.reset();
    authorization_ = Authorization::unknown;
    const bool hasFailed = std::exchange(isStarting_, false);
    listen();
    gone.send();
    if (hasFailed) {
        notFound.send();
    }
}

void NotificationServer::listen() {
    watcher_.reset();
    if (!bus_.isConnected()) {
        authorization_ = Authorization::denied;
        return;
    }
    qRegisterMetaType<QDBusMessage>();
    // Without the name of the service, which Qt would wait to look up.
    bus_.connect(QString(), kPath, kService, QStringLiteral("ActionInvoked"), this,
                 SLOT(handleAction(uint, QString, QDBusMessage)));
    bus_.connect(QString(), kPath, kService, QStringLiteral("NotificationClosed"), this,
                 SLOT(handleClosed(uint, uint, QDBusMessage)));
    watcher_ = std::make_unique<QDBusServiceWatcher>(kService, bus_,
                                                     QDBusServiceWatcher::WatchForOwnerChange);
    connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { changeOwner(owner); });
    askForAbilities(Activation::forbidden);
}

void NotificationServer::start() {
    if (!isReady() && !std::exchange(isStarting_, true)) {
        askForAbilities(Activation::allowed);
    }
}

// A server that ends before it is ready counts as none: to ask again would have the bus start one
// that dies at once again and again.
void NotificationServer::changeOwner(const QString& owner) {
    ++question_;
    owner_ = owner;
    abilities_.reset();
    const bool hasFailed = owner.isEmpty() && std::exchange(isStarting_, false);
    if (owner.isEmpty()) {
        askWhetherOneCanBeStarted();
    } else {
        askForAbilities(Activation::forbidden);
    }
    gone.send();
    if (hasFailed) {
        notFound.send();
    }
}

// At launch without activation: a desktop that is just starting has its own idea of which server to
// run, and a poke at the name could start another.
void NotificationServer::askForAbilities(Activation activation) {
    QDBusMessage question = callOf("GetCapabilities");
    question.setAutoStartService(activation == Activation::allowed);
    call(question, [this, activation, number = ++question_](const QDBusMessage& answer) {
        if (number != question_) {
            return;
        }
        if (isFromServer(answer)) {
            takeAbilities(answer);
            return;
        }
        if (activation == Activation::forbidden) {
            askWhetherOneCanBeStarted();
        } else if (saysThatNoneCanBeStarted(answer)) {
            authorization_ = Authorization::denied;
        }
        if (std::exchange(isStarting_, false)) {
            notFound.send();
        }
    });
}

void NotificationServer::takeAbilities(const QDBusMessage& answer) {
    owner_ = answer.service();
    isStarting_ = false;
    if (answer.type() == QDBusMessage::ReplyMessage) {
        authorization_ = Authorization::granted;
    }
    Abilities abilities;
    if (answer.signature() == QLatin1String("as")) {
        const QStringList names = answer.arguments().constFirst().toStringList();
        abilities.actions = names.contains(QLatin1String("actions"));
        abilities.bodyMarkup = names.contains(QLatin1String("body-markup"));
    }
    abilities_ = abilities;
    found.send();
}

void NotificationServer::askWhetherOneCanBeStarted() {
    call(questionToBus(QStringLiteral("ListActivatableNames")),
         [this, number = ++question_](const QDBusMessage& answer) {
             if (number == question_ && answer.signature() == QLatin1String("as") &&
                 !answer.arguments().constFirst().toStringList().contains(kService)) {
                 authorization_ = Authorization::denied;
             }
         });
}

void NotificationServer::notify(const Note& note, Number replaces,
                                std::function<void(Number)> answer) {
    const QString body = abilities_->bodyMarkup ? note.body.toHtmlEscaped() : note.body;
    QStringList actions;
    for (const Action& action : note.actions) {
        if (abilities_->actions) {
            actions << action.id << action.label;
        }
    }
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("org.ostrel.Ostrel")}};
    if (note.sounds) {
        hints[QStringLiteral("sound-name")] = QStringLiteral("message-new-instant");
    }
    QDBusMessage question = callOf("Notify");
    question << QStringLiteral("Ostrel") << replaces << QStringLiteral("ostrel") << note.title
             << body << actions << hints << kServerDecidesHowLong;
    call(question, [this, answer = std::move(answer)](const QDBusMessage& reply) {
        const bool isGood = reply.type() == QDBusMessage::ReplyMessage &&
                            reply.signature() == QLatin1String("u") && reply.service() == owner_;
        if (isGood) {
            authorization_ = Authorization::granted;
        }
        answer(isGood ? reply.arguments().constFirst().toUInt() : 0);
    });
}

void NotificationServer::close(Number number) {
    QDBusMessage question = callOf("CloseNotification");
    question.setAutoStartService(false);
    question << number;
    bus_.send(question);
}

void NotificationServer::call(const QDBusMessage& message, Answer answer) {
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, kUntilAnsweredMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                answer(finished->reply());
            });
}

void NotificationServer::handleAction(uint number, const QString& action,
                                      const QDBusMessage& message) {
    if (message.service() == owner_) {
        actionInvoked.send(number, action);
    }
}

void NotificationServer::handleClosed(uint number, uint, const QDBusMessage& message) {
    if (message.service() == owner_) {
        closed.send(number);
    }
}

}  // namespace ostrel
