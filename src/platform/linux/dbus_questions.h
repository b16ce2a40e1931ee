#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <functional>
#include <optional>

class QObject;

namespace ostrel {

inline constexpr QLatin1String kBusService{"org.freedesktop.DBus"};
inline constexpr QLatin1String kPropertiesInterface{"org.freedesktop.DBus.Properties"};
inline constexpr QLatin1String kLoginService{"org.freedesktop.login1"};
inline constexpr QLatin1String kLoginPath{"/org/freedesktop/login1"};
inline constexpr QLatin1String kLoginManager{"org.freedesktop.login1.Manager"};

// A call that does not start the service if it does not run.
[[nodiscard]] QDBusMessage questionTo(const QString& service, const QString& path,
                                      const QString& interface, const QString& member);

// Likewise, to the bus itself.
[[nodiscard]] QDBusMessage questionToBus(const QString& member, const QVariantList& arguments = {});

// Sends it and returns at once; `answer` gets the reply or the error in a later turn of the event
// loop, unless `receiver` is gone then.
void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* receiver,
         std::function<void(const QDBusMessage&)> answer);

// Likewise, for the process behind a name on the bus; absent when that is gone.
void askForProcess(const QDBusConnection& bus, const QString& name, QObject* receiver,
                   std::function<void(std::optional<std::int64_t>)> answer);

// The only argument of a reply, when it is one of this D-Bus signature.
[[nodiscard]] std::optional<QVariant> onlyArgument(const QDBusMessage& reply,
                                                   QLatin1String signature);

}  // namespace ostrel
