#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <vector>

#include "base/signal.h"

class QDBusMessage;

namespace ostrel {

// Asks a service of the bus one question, and asks again whenever the answer may be another: when
// the service says so, and when another process takes it over.
//
// The service may be missing, start late, hang, and make room for another at any time; nothing
// here waits for it, and nothing starts it.
class BusQuestion : public QObject {
    Q_OBJECT

  public:
    struct Call {
        QString service;
        QString path;
        QString interface;
        QString member;
        QVariantList arguments;
    };
    // A signal of the service that tells of a change, with these as its first arguments.
    struct Sign {
        QString interface;
        QString member;
        QStringList arguments;
    };

    BusQuestion(QDBusConnection bus, Call call, const std::vector<Sign>& signs = {});

    // Whether the service has answered since it changed hands, be it with an error.
    [[nodiscard]] bool isAnswered() const { return !owner_.isEmpty(); }

    // The answer, an error, or an empty message when what was answered before is void: the service
    // changed hands, or the bus is lost. A service that hangs answers when it wakes up.
    Signal<const QDBusMessage&> answered;

  private:
    Q_SLOT void handleSign(const QDBusMessage& sign);
    Q_SLOT void loseBus();
    void forget();
    void ask();
    void take(const QDBusMessage& answer);

    QDBusConnection bus_;
    Call call_;
    QString owner_;  // the unique name of who answered; empty while nobody has
    bool isAsking_ = false;
    bool isStale_ = false;  // a sign came while it was being asked
    int question_ = 0;      // the answers to earlier ones do not count
};

}  // namespace ostrel
