#include "screens/linux/bus_object.h"

#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QStringList>
#include <utility>

namespace ostrel {
namespace {

constexpr QLatin1String kProperties("org.freedesktop.DBus.Properties");

// Of arguments that are given as NAME:SIGNATURE.
QString elementsOf(const char* arguments, const char* direction) {
    QString elements;
    for (const QString& argument :
         QString::fromLatin1(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        elements += QStringLiteral("<arg name=\"%1\" type=\"%2\"%3/>")
                        .arg(argument.section(QLatin1Char(':'), 0, 0),
                             argument.section(QLatin1Char(':'), 1), QLatin1String(direction));
    }
    return elements;
}

QString signatureOf(const char* arguments) {
    QString signature;
    for (const QString& argument : QString::fromLatin1(arguments).split(QLatin1Char(' '))) {
        signature += argument.section(QLatin1Char(':'), 1);
    }
    return signature;
}

}  // namespace

BusObject::BusObject(QDBusConnection bus, const Place& place)
    : bus_(std::move(bus)), place_(place) {
    bus_.registerVirtualObject(place_.path, this, QDBusConnection::SingleNode);
}

BusObject::~BusObject() {
    bus_.unregisterObject(place_.path);
}

QString BusObject::introspect(const QString&) const {
    QString properties;
    for (auto property = properties_.begin(); property != properties_.end(); ++property) {
        properties += QStringLiteral("<property name=\"%1\" type=\"%2\" access=\"read\"/>")
                          .arg(property.key(),
                               QLatin1String(QDBusMetaType::typeToSignature(property->metaType())));
    }
    return QStringLiteral("<interface name=\"%1\">%2%3</interface>")
        .arg(place_.interface, properties, members_);
}

// Introspection is left to the caller, which has it from introspect().
bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() == QLatin1String("org.freedesktop.DBus.Introspectable")) {
        return false;
    }
    const QDBusMessage answer = answerTo(message);
    if (message.isReplyRequired()) {
        connection.send(answer);
    }
    return true;
}

void BusObject::addMethod(const char* name, const char* takes, const char* returns, Answer answer) {
    methods_[QLatin1String(name)] = {signatureOf(takes), std::move(answer)};
    members_ += QStringLiteral("<method name=\"%1\">%2%3</method>")
                    .arg(QLatin1String(name), elementsOf(takes, " direction=\"in\""),
                         elementsOf(returns, " direction=\"out\""));
}

void BusObject::addSignal(const char* name, const char* carries) {
    members_ += QStringLiteral("<signal name=\"%1\">%2</signal>")
                    .arg(QLatin1String(name), elementsOf(carries, ""));
}

bool BusObject::setValue(QLatin1String name, const QVariant& value) {
    QVariant& property = properties_[name];
    if (property == value) {
        return false;
    }
    property = value;
    return true;
}

void BusObject::sendSignal(QLatin1String name, const QVariantList& arguments) {
    QDBusMessage signal = QDBusMessage::createSignal(place_.path, place_.interface, name);
    signal.setArguments(arguments);
    bus_.send(signal);
}

QDBusMessage BusObject::answerTo(const QDBusMessage& call) {
    if (call.interface() == kProperties) {
        return answerAboutProperties(call);
    }
    const auto method = methods_.find(call.member());
    if (method == methods_.end() ||
        (!call.interface().isEmpty() && call.interface() != place_.interface)) {
        return call.createErrorReply(
            QDBusError::UnknownMethod,
            QStringLiteral("No method %1.%2 here").arg(call.interface(), call.member()));
    }
    if (call.signature() != method->second.signature) {
        return call.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("%1 takes arguments of signature \"%2\", not \"%3\"")
                .arg(call.member(), method->second.signature, call.signature()));
    }
    return method->second.answer(call);
}

QDBusMessage BusObject::answerAboutProperties(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const QString interface = arguments.value(0).toString();
    if (!interface.isEmpty() && interface != place_.interface) {
        return call.createErrorReply(QDBusError::UnknownInterface,
                                     QStringLiteral("No interface %1 here").arg(interface));
    }
    const auto is = [&call](QLatin1String member, QLatin1String signature) {
        return call.member() == member && call.signature() == signature;
    };
    if (is(QLatin1String("GetAll"), QLatin1String("s"))) {
        return call.createReply(properties_);
    }
    const QString name = arguments.value(1).toString();
    if (is(QLatin1String("Get"), QLatin1String("ss"))) {
        handleRead(name, call.service());
        const auto property = properties_.constFind(name);
        if (property == properties_.constEnd()) {
            return call.createErrorReply(QDBusError::UnknownProperty,
                                         QStringLiteral("No property %1 here").arg(name));
        }
        return call.createReply(QVariant::fromValue(QDBusVariant(*property)));
    }
    if (is(QLatin1String("Set"), QLatin1String("ssv"))) {
        return call.createErrorReply(QDBusError::PropertyReadOnly,
                                     QStringLiteral("%1 cannot be set").arg(name));
    }
    return call.createErrorReply(QDBusError::UnknownMethod,
                                 QStringLiteral("No such call: %1").arg(call.member()));
}

}  // namespace ostrel
