#pragma once

#include <QLatin1String>

// Where the running program is found on the session bus, see docs/dbus.md.
namespace ostrel::ControlNames {

inline constexpr QLatin1String kService{"org.ostrel.Ostrel"};
inline constexpr QLatin1String kPath{"/org/ostrel/Ostrel"};
inline constexpr QLatin1String kInterface{"org.ostrel.Ostrel1"};
inline constexpr QLatin1String kStatusChanged{"StatusChanged"};
inline constexpr QLatin1String kRefused{"org.ostrel.Error.Refused"};
inline constexpr QLatin1String kInvalidArgument{"org.ostrel.Error.InvalidArgument"};

}  // namespace ostrel::ControlNames
