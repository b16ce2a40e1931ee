#include "platform/linux/gnome_banners.h"

#include <QDBusMessage>
#include <algorithm>
#include <utility>

namespace ostrel {
namespace {

constexpr QLatin1String kSchema("org.gnome.desktop.notifications");
constexpr QLatin1String kKey("show-banners");
constexpr QLatin1String kKeyPath("/org/gnome/desktop/notifications/show-banners");

// A killed process ends as soon as the system gets to it.
constexpr int kKillPatienceMs = 1000;

// dconf names a folder with a slash at its end when all in it may have changed.
bool covers(const QString& path) {
    return path == kKeyPath || (path.endsWith(u'/') && QString(kKeyPath).startsWith(path));
}

}  // namespace

GnomeBanners::GnomeBanners(QDBusConnection bus, QString gsettings,
                           std::chrono::milliseconds patience)
    : gsettings_(std::move(gsettings)) {
    reader_.setStandardInputFile(QProcess::nullDevice());
    reader_.setStandardErrorFile(QProcess::nullDevice());
    connect(&reader_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        const bool isGood = status == QProcess::NormalExit && code == 0;
        take(isGood && reader_.readAllStandardOutput().trimmed() == "false");
        if (std::exchange(isStale_, false)) {
            read();
        }
    });
    connect(&reader_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            isStale_ = false;
            take(false);
        }
    });
    patience_.setSingleShot(true);
    patience_.setInterval(patience);
    connect(&patience_, &QTimer::timeout, this, [this] { reader_.kill(); });

    qRegisterMetaType<QDBusMessage>();
    // Of whichever database: a profile may have the user's under any name.
    bus.connect(QString(), QString(), QStringLiteral("ca.desrt.dconf.Writer"),
                QStringLiteral("Notify"), this, SLOT(handleWrite(QDBusMessage)));
    read();
}

GnomeBanners::~GnomeBanners() {
    reader_.disconnect(this);
    if (reader_.state() != QProcess::NotRunning) {
        reader_.kill();
        reader_.waitForFinished(kKillPatienceMs);
    }
}

void GnomeBanners::handleWrite(const QDBusMessage& write) {
    if (write.signature() != QLatin1String("sass")) {
        return;
    }
    const QString prefix = write.arguments().at(0).toString();
    const QStringList changes = write.arguments().at(1).toStringList();
    if (std::ranges::none_of(changes,
                             [&](const QString& change) { return covers(prefix + change); })) {
        return;
    }
    if (reader_.state() == QProcess::NotRunning) {
        read();
    } else {
        isStale_ = true;
    }
}

void GnomeBanners::read() {
    patience_.start();
    reader_.start(gsettings_, {QStringLiteral("get"), QString(kSchema), QString(kKey)},
                  QIODevice::ReadOnly);
}

void GnomeBanners::take(bool isOn) {
    patience_.stop();
    isOn_.set(isOn);
}

}  // namespace ostrel
