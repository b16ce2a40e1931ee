#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <cstdint>
#include <set>

class QDBusMessage;

namespace ostrel {

// The processes that keep the login manager (org.freedesktop.login1) from calling the session idle.
//
// Nothing here waits for an answer; a login manager that is missing or does not answer knows none.
class LoginInhibitors : public QObject {
    Q_OBJECT

  public:
    explicit LoginInhibitors(QDBusConnection systemBus);

    // As of the last answer.
    [[nodiscard]] const std::set<std::int64_t>& processes() const { return processes_; }

    // Asks anew: one inhibitor more of the same kind is not announced.
    void refresh();

  private:
    Q_SLOT void handleChange(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated);
    void take(const QDBusMessage& answer);

    QDBusConnection bus_;
    std::set<std::int64_t> processes_;
    bool isAsking_ = false;
    bool askAgain_ = false;
};

}  // namespace ostrel
