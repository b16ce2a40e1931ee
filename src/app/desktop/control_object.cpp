#include "app/desktop/control_object.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "app/control/control.h"
#include "app/desktop/control_names.h"
#include "platform/linux/dbus_questions.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

QDBusMessage replyTo(const QDBusMessage& call, const ControlOutcome& outcome) {
    switch (outcome.kind) {
        case ControlOutcome::Kind::refused:
            return call.createErrorReply(ControlNames::kRefused, Texts::of(outcome.reason));
        case ControlOutcome::Kind::invalid:
            return call.createErrorReply(ControlNames::kInvalidArgument, Texts::of(outcome.reason));
        case ControlOutcome::Kind::done:
            break;
    }
    return call.createReply();
}

QStringList textsOf(const QDBusMessage& call) {
    QStringList texts;
    for (const QVariant& argument : call.arguments()) {
        texts << argument.toString();
    }
    return texts;
}

}  // namespace

ControlObject::ControlObject(QDBusConnection bus, Control& control, UserOf userOf)
    : BusObject(std::move(bus), {ControlNames::kPath, ControlNames::kInterface}),
      control_(control),
      userOf_(std::move(userOf)) {
    lives_.setConnection(this->bus());
    lives_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&lives_, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString& caller) { unwatch(caller); });
    telling_.setSingleShot(true);
    telling_.setTimerType(Qt::PreciseTimer);
    connect(&telling_, &QTimer::timeout, this, [this] { tell(); });
    addMethods();
}

ControlObject::UserOf ControlObject::usersOf(const QDBusConnection& bus) {
    return [bus](const QString& caller, QObject* receiver, const Answer& answer) {
        ask(bus, questionToBus(QStringLiteral("GetConnectionUnixUser"), {caller}), receiver,
            [answer](const QDBusMessage& reply) {
                const auto user = onlyArgument(reply, QLatin1String("u"));
                answer(user ? std::optional(user->toUInt()) : std::nullopt);
            });
    };
}

// What the interface looks like is no secret.
bool ControlObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() == QLatin1String("org.freedesktop.DBus.Introspectable")) {
        return false;
    }
    userOf_(message.service(), this, [this, message, connection](std::optional<uint> user) {
        if (user == getuid()) {
            BusObject::handleMessage(message, connection);
        } else if (message.isReplyRequired()) {
            connection.send(message.createErrorReply(QDBusError::AccessDenied,
                                                     Texts::of("cli.refused.other_user")));
        }
    });
    return true;
}

void ControlObject::addAction(const char* name, const char* takes,
                              std::function<ControlOutcome(const QStringList&)> act) {
    addMethod(name, takes, "", [act = std::move(act)](const QDBusMessage& call) {
        return replyTo(call, act(textsOf(call)));
    });
}

void ControlObject::addMethods() {
    const auto status = [this] { return QString::fromStdString(control_.printStatus()); };
    addMethod("Status", "", "status:s",
              [status](const QDBusMessage& call) { return call.createReply(status()); });
    addMethod("Watch", "", "status:s", [this, status](const QDBusMessage& call) {
        watch(call.service());
        return call.createReply(status());
    });
    addMethod("Unwatch", "", "", [this](const QDBusMessage& call) {
        unwatch(call.service());
        return call.createReply();
    });
    addSignal("StatusChanged", "status:s");
    addAction("Pause", "duration:s",
              [this](const QStringList& texts) { return control_.pause(texts[0].toStdString()); });
    addAction("Resume", "", [this](const QStringList&) { return control_.resume(); });
    addAction("Break", "kind:s", [this](const QStringList& texts) {
        return control_.startBreak(texts[0].toStdString());
    });
    addAction("Skip", "", [this](const QStringList&) { return control_.skip(); });
    addAction("Postpone", "", [this](const QStringList&) { return control_.postpone(); });
    addMethod("Report", "range:s format:s", "report:s", [this](const QDBusMessage& call) {
        const QStringList texts = textsOf(call);
        const ControlOutcome outcome =
            control_.report(texts[0].toStdString(), texts[1].toStdString());
        return outcome.isDone() ? call.createReply(QString::fromStdString(outcome.text))
                                : replyTo(call, outcome);
    });
    addMethod("GetSettings", "", "document:s", [this](const QDBusMessage& call) {
        return call.createReply(QString::fromStdString(control_.settings()));
    });
    addAction("SetSetting", "name:s value:s", [this](const QStringList& texts) {
        return control_.setSetting(texts[0].toStdString(), texts[1].toStdString());
    });
    addAction("ImportSettings", "document:s", [this](const QStringList& texts) {
        return control_.importSettings(texts[0].toStdString());
    });
    addAction("Open", "window:s",
              [this](const QStringList& texts) { return control_.open(texts[0].toStdString()); });
}

void ControlObject::watch(const QString& caller) {
    if (watchers_.contains(caller)) {
        return;
    }
    if (watchers_.isEmpty()) {
        // What it is answered with is what it knows.
        told_ = QString::fromStdString(control_.printStatus());
        changes_ = control_.onChange([this] { tellSoon(); });
    } else {
        tell();
    }
    watchers_ << caller;
    lives_.addWatchedService(caller);
    // It may have gone before its end was waited for.
    userOf_(caller, this, [this, caller](std::optional<uint> user) {
        if (!user) {
            unwatch(caller);
        }
    });
}

void ControlObject::unwatch(const QString& caller) {
    if (watchers_.removeAll(caller) == 0) {
        return;
    }
    lives_.removeWatchedService(caller);
    if (watchers_.isEmpty()) {
        changes_.clear();
        telling_.stop();
    }
}

// A tick changes several things at once.
void ControlObject::tellSoon() {
    if (!telling_.isActive()) {
        const qint64 passedMs = sinceTold_.isValid() ? sinceTold_.elapsed() : kLeastMsBetween;
        telling_.start(static_cast<int>(std::max<qint64>(kLeastMsBetween - passedMs, 0)));
    }
}

void ControlObject::tell() {
    const QString status = QString::fromStdString(control_.printStatus());
    if (status == std::exchange(told_, status)) {
        return;
    }
    sinceTold_.start();
    for (const QString& watcher : watchers_) {
        QDBusMessage signal = QDBusMessage::createTargetedSignal(
            watcher, ControlNames::kPath, ControlNames::kInterface, ControlNames::kStatusChanged);
        signal << status;
        bus().send(signal);
    }
}

}  // namespace ostrel
