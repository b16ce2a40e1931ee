#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>
#include <array>

#include "platform/api/motion_settings.h"

class QDBusPendingCallWatcher;

namespace ostrel {

// Follows the desktop's wish for little motion through org.freedesktop.portal.Settings: animations
// switched off in GNOME's or KDE's settings, or the "reduced-motion" appearance.
//
// Nothing here waits for an answer: until it arrives, and where there is no portal, animations are
// on. The environment variable OSTREL_REDUCE_MOTION=1 asks for little motion whatever they say.
class PortalMotionSettings : public QObject, public MotionSettings {
    Q_OBJECT

  public:
    explicit PortalMotionSettings(QDBusConnection bus = QDBusConnection::sessionBus());

    [[nodiscard]] bool reduceMotion() const override;

  private:
    Q_SLOT void take(const QString& group, const QString& key, const QDBusVariant& value);
    void askForAll();
    void takeAll(const QDBusPendingCallWatcher& answer);
    void takeValue(const QString& group, const QString& key, QVariant value);

    QDBusConnection bus_;
    bool forced_ = false;
    std::array<bool, 3> asksForLess_{};  // per setting
};

}  // namespace ostrel
