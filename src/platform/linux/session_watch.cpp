#include "platform/linux/session_watch.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/api/system_events.h"
#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

constexpr std::array kSavers{
    QLatin1String("org.gnome.ScreenSaver"),    QLatin1String("org.freedesktop.ScreenSaver"),
    QLatin1String("org.xfce.ScreenSaver"),     QLatin1String("org.mate.ScreenSaver"),
    QLatin1String("org.cinnamon.ScreenSaver"),
};
const QString kLoginSession = QStringLiteral("org.freedesktop.login1.Session");

QString pathOf(QString service) {
    return u'/' + service.replace(u'.', u'/');
}

}  // namespace

SessionWatch::Saver::Saver(const QDBusConnection& bus, const QString& name)
    : question(bus, {name, pathOf(name), name, QStringLiteral("GetActive"), {}},
               {{name, QStringLiteral("ActiveChanged"), {}}}) {}

SessionWatch::SessionWatch(SystemEvents& events, const QDBusConnection& session,
                           QDBusConnection system)
    : events_(events),
      system_(std::move(system)),
      // The session of this process, or the user's one with a screen when it belongs to none.
      loginSession_(system_, {kLoginService,
                              kLoginPath,
                              kLoginManager,
                              QStringLiteral("GetSession"),
                              {QStringLiteral("auto")}}) {
    lockRequest_.setSingleShot(true);
    lockRequest_.setInterval(kUntilLockedMs);
    connect(&lockRequest_, &QTimer::timeout, this, [this] { tell(); });
    sessionObserver_ = loginSession_.answered.subscribe(
        [this](const QDBusMessage& answer) { watchLogin(answer); });
    adopt(session);
}

void SessionWatch::adopt(const QDBusConnection& session) {
    savers_.clear();
    for (const QLatin1String name : kSavers) {
        auto saver = std::make_unique<Saver>(session, name);
        saver->observer =
            saver->question.answered.subscribe([this, &to = *saver](const QDBusMessage& answer) {
                const auto isActive = onlyArgument(answer, QLatin1String("b"));
                to.isActive = isActive && isActive->toBool();
                tell();
            });
        savers_.push_back(std::move(saver));
    }
}

void SessionWatch::watchLogin(const QDBusMessage& session) {
    const auto answer = onlyArgument(session, QLatin1String("o"));
    const QString path = answer ? answer->value<QDBusObjectPath>().path() : QString();
    if (path == loginPath_) {
        return;
    }
    for (const auto& [signal, slot] :
         {std::pair("Lock", SLOT(handleLock())), std::pair("Unlock", SLOT(handleUnlock()))}) {
        const QString name = QString::fromLatin1(signal);
        system_.disconnect(QString(), loginPath_, kLoginSession, name, this, slot);
        if (!path.isEmpty()) {
            system_.connect(QString(), path, kLoginSession, name, this, slot);
        }
    }
    loginPath_ = path;
    login_.reset();
    if (path.isEmpty()) {
        takeLogin(QDBusMessage());
        return;
    }
    login_ = std::make_unique<BusQuestion>(
        system_,
        BusQuestion::Call{
            kLoginService, path, kPropertiesInterface, QStringLiteral("GetAll"), {kLoginSession}},
        std::vector<BusQuestion::Sign>{
            {kPropertiesInterface, QStringLiteral("PropertiesChanged"), {kLoginSession}}});
    loginObserver_ =
        login_->answered.subscribe([this](const QDBusMessage& answers) { takeLogin(answers); });
}

void SessionWatch::takeLogin(const QDBusMessage& properties) {
    const auto answer = onlyArgument(properties, QLatin1String("a{sv}"));
    const auto all = answer ? qdbus_cast<QVariantMap>(*answer) : QVariantMap();
    isElsewhere_ = !all.value(QStringLiteral("Active"), true).toBool();
    isLocked_ = all.value(QStringLiteral("LockedHint"), false).toBool();
    tell();
}

void SessionWatch::handleLock() {
    lockRequest_.start();
    tell();
}

void SessionWatch::handleUnlock() {
    lockRequest_.stop();
    tell();
}

void SessionWatch::tell() {
    const bool isCovered =
        std::ranges::any_of(savers_, [](const auto& saver) { return saver->isActive; });
    events_.isSessionOnScreen.set(!isElsewhere_ && !isLocked_ && !isCovered &&
                                  !lockRequest_.isActive());
}

}  // namespace ostrel
