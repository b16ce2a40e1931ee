#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>
#include <chrono>

#include "platform/linux/do_not_disturb_source.h"

class QDBusMessage;

namespace ostrel {

// GNOME's switch: Do Not Disturb is on while its setting "show-banners" is off.
//
// The setting is read by the program `gsettings`, which knows of defaults and of the
// administrator's locks; it runs once at the start and each time that dconf tells of a write to
// it. Only for where GNOME runs.
class GnomeBanners : public QObject, public DoNotDisturbSource {
    Q_OBJECT

  public:
    // `gsettings`: a program to be found on the path, or its place. After `patience` a run is
    // ended, and nothing was read.
    GnomeBanners(QDBusConnection bus, QString gsettings,
                 std::chrono::milliseconds patience = std::chrono::seconds(10));
    GnomeBanners(const GnomeBanners&) = delete;
    GnomeBanners& operator=(const GnomeBanners&) = delete;
    ~GnomeBanners() override;

  private:
    Q_SLOT void handleWrite(const QDBusMessage& write);
    void read();
    void take(bool isOn);

    QString gsettings_;
    QProcess reader_;
    bool isStale_ = false;  // a write came while it was being read
    QTimer patience_;
};

}  // namespace ostrel
