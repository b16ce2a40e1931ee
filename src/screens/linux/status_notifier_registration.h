#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

#include "base/signal.h"

namespace ostrel {

// Keeps the status item of this process registered with the desktop's StatusNotifierWatcher,
// whichever that is at the moment, and knows whether anything shows it. Nothing here waits.
class StatusNotifierRegistration : public QObject {
    Q_OBJECT

  public:
    explicit StatusNotifierRegistration(const QDBusConnection& bus);

    // Whether there is a StatusNotifierHost. Absent until that is known; a watcher that hangs
    // leaves it so.
    [[nodiscard]] std::optional<bool> hasHost() const { return hasHost_; }

    Signal<> hostChanged;

  private:
    using Answer = std::function<void(const QDBusMessage&)>;

    void takeName();
    void registerItem();
    Q_SLOT void askForHost();
    void setHost(bool isThere);
    void call(const QDBusMessage& message, const Answer& answer);

    QDBusConnection bus_;
    QString itemName_;  // empty until the bus has answered
    std::optional<bool> hasHost_;
    int question_ = 0;  // the answers to earlier ones do not count
};

}  // namespace ostrel
