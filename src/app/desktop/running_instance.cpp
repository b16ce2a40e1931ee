#include "app/desktop/running_instance.h"

#include <QDBusError>
#include <QDBusMessage>

#include "app/desktop/control_names.h"
#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

constexpr QLatin1String kConnection("ostrel-command");

RunningInstance::Answer::Kind kindOf(const QDBusMessage& error) {
    using Kind = RunningInstance::Answer::Kind;
    if (error.errorName() == ControlNames::kInvalidArgument) {
        return Kind::invalid;
    }
    if (error.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner")) {
        return Kind::absent;
    }
    switch (QDBusError(error).type()) {
        case QDBusError::ServiceUnknown:
            return Kind::absent;
        case QDBusError::NoReply:
        case QDBusError::Timeout:
        case QDBusError::TimedOut:
        case QDBusError::UnknownObject:
            return Kind::silent;
        case QDBusError::Disconnected:
        case QDBusError::NoServer:
            return Kind::noBus;
        default:
            return Kind::refused;
    }
}

}  // namespace

RunningInstance::RunningInstance()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection)) {}

// The toolkit's own connections still receive while the process takes itself apart.
RunningInstance::~RunningInstance() {
    QDBusConnection::disconnectFromBus(kConnection);
}

RunningInstance::Answer RunningInstance::ask(const QString& method,
                                             const QVariantList& arguments) const {
    if (!bus_.isConnected()) {
        return {Answer::Kind::noBus, {}};
    }
    QDBusMessage call =
        questionTo(ControlNames::kService, ControlNames::kPath, ControlNames::kInterface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = bus_.call(call, QDBus::Block, kPatienceMs);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return {kindOf(reply), reply.errorMessage().toStdString()};
    }
    return {Answer::Kind::done, reply.arguments().value(0).toString().toStdString()};
}

}  // namespace ostrel
