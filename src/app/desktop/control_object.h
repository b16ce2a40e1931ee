#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "base/subscription.h"
#include "screens/linux/bus_object.h"

namespace ostrel {

class Control;
struct ControlOutcome;

// The interface org.ostrel.Ostrel1 (docs/dbus.md): every call becomes one of a Control.
//
// Only the user whose program this is gets an answer. The status is told of to those who asked to
// watch it, for as long as they are on the bus, once a second at most; while nobody watches,
// nothing is worked out.
class ControlObject : public BusObject {
  public:
    // Tells, later, which user a caller on the bus is; absent when that cannot be told.
    using Answer = std::function<void(std::optional<uint> user)>;
    using UserOf = std::function<void(const QString& caller, QObject* receiver, Answer answer)>;

    // `control` outlives it.
    ControlObject(QDBusConnection bus, Control& control, UserOf userOf);

    // As the bus itself knows them.
    [[nodiscard]] static UserOf usersOf(const QDBusConnection& bus);

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    static constexpr int kLeastMsBetween = 1000;

    // A method without an answer but its outcome; its arguments are texts.
    void addAction(const char* name, const char* takes,
                   std::function<ControlOutcome(const QStringList&)> act);
    void addMethods();
    void watch(const QString& caller);
    void unwatch(const QString& caller);
    void tellSoon();
    void tell();

    Control& control_;
    UserOf userOf_;
    QStringList watchers_;
    QDBusServiceWatcher lives_;  // of the watchers
    QString told_;
    QElapsedTimer sinceTold_;
    QTimer telling_;
    std::vector<Subscription> changes_;
};

}  // namespace ostrel
