#include "platform/linux/dbus_questions.h"

#include <QDBusPendingCallWatcher>
#include <utility>

namespace ostrel {

QDBusMessage questionTo(const QString& service, const QString& path, const QString& interface,
                        const QString& member) {
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, member);
    question.setAutoStartService(false);
    return question;
}

QDBusMessage questionToBus(const QString& member, const QVariantList& arguments) {
    QDBusMessage question =
        questionTo(kBusService, QStringLiteral("/org/freedesktop/DBus"), kBusService, member);
    question.setArguments(arguments);
    return question;
}

void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* receiver,
         std::function<void(const QDBusMessage&)> answer) {
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
                     [answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         answer(finished->reply());
                     });
}

void askForProcess(const QDBusConnection& bus, const QString& name, QObject* receiver,
                   std::function<void(std::optional<std::int64_t>)> answer) {
    ask(bus, questionToBus(QStringLiteral("GetConnectionUnixProcessID"), {name}), receiver,
        [answer = std::move(answer)](const QDBusMessage& reply) {
            const auto process = onlyArgument(reply, QLatin1String("u"));
            answer(process ? std::optional<std::int64_t>(process->toUInt()) : std::nullopt);
        });
}

std::optional<QVariant> onlyArgument(const QDBusMessage& reply, QLatin1String signature) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != signature) {
        return std::nullopt;
    }
    return reply.arguments().constFirst();
}

}  // namespace ostrel
