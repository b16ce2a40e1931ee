#include "platform/linux/linux_do_not_disturb.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>
#include <utility>

#include "platform/linux/dbus_questions.h"
#include "platform/linux/gnome_banners.h"

namespace ostrel {
namespace {

using Call = BusQuestion::Call;
using Sign = BusQuestion::Sign;

constexpr QLatin1String kServer("org.freedesktop.Notifications");
constexpr QLatin1String kServerPath("/org/freedesktop/Notifications");

// The bool, however often it is wrapped, and nothing else.
bool isTrue(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
        return false;
    }
    QVariant value = answer.arguments().constFirst();
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value.metaType() == QMetaType::fromType<bool>() && value.toBool();
}

// A switch that a service of the bus tells.
class BusSwitch : public DoNotDisturbSource {
  public:
    BusSwitch(const QDBusConnection& bus, Call call, const std::vector<Sign>& signs)
        : question_(bus, std::move(call), signs),
          observer_(question_.answered.subscribe(
              [this](const QDBusMessage& answer) { isOn_.set(isTrue(answer)); })) {}

  private:
    BusQuestion question_;
    Subscription observer_;
};

std::unique_ptr<BusSwitch> serverProperty(const QDBusConnection& bus, const QString& interface,
                                          const QString& property) {
    return std::make_unique<BusSwitch>(
        bus,
        Call{kServer,
             kServerPath,
             kPropertiesInterface,
             QStringLiteral("Get"),
             {interface, property}},
        std::vector<Sign>{
            {kPropertiesInterface, QStringLiteral("PropertiesChanged"), {interface}}});
}

std::unique_ptr<BusSwitch> xfceSetting(const QDBusConnection& bus, const QString& channel,
                                       const QString& property) {
    const QString xfconf = QStringLiteral("org.xfce.Xfconf");
    return std::make_unique<BusSwitch>(
        bus,
        Call{xfconf, QStringLiteral("/org/xfce/Xfconf"), xfconf, QStringLiteral("GetProperty"),
             QVariantList{channel, property}},
        std::vector<Sign>{{xfconf, QStringLiteral("PropertyChanged"), {channel, property}},
                          {xfconf, QStringLiteral("PropertyRemoved"), {channel, property}}});
}

}  // namespace

LinuxDoNotDisturb::LinuxDoNotDisturb(QDBusConnection bus, QString gsettings)
    : bus_(std::move(bus)), gsettings_(std::move(gsettings)) {
    adopt(bus_);
}

LinuxDoNotDisturb::~LinuxDoNotDisturb() = default;

void LinuxDoNotDisturb::adopt(const QDBusConnection& bus) {
    bus_ = bus;
    server_ = std::make_unique<BusQuestion>(
        bus_, Call{kServer, kServerPath, kServer, QStringLiteral("GetServerInformation"), {}});
    serverObserver_ =
        server_->answered.subscribe([this](const QDBusMessage& answer) { takeServer(answer); });
}

// The settings of a desktop outlive its notification server, so those of another one do not count.
void LinuxDoNotDisturb::takeServer(const QDBusMessage& answer) {
    observers_.clear();
    sources_.clear();
    if (server_->isAnswered()) {
        const bool isTold = answer.signature() == QLatin1String("ssss");
        const QString name = isTold ? answer.arguments().at(0).toString() : QString();
        const QString vendor = isTold ? answer.arguments().at(1).toString() : QString();
        if (name == QLatin1String("gnome-shell")) {
            add(std::make_unique<GnomeBanners>(bus_, gsettings_));
        } else if (vendor == QLatin1String("Xfce")) {
            add(xfceSetting(bus_, QStringLiteral("xfce4-notifyd"),
                            QStringLiteral("/do-not-disturb")));
        } else {
            add(serverProperty(bus_, kServer, QStringLiteral("Inhibited")));
            add(serverProperty(bus_, QStringLiteral("org.dunstproject.cmd0"),
                               QStringLiteral("paused")));
        }
    }
    announceChange();
}

void LinuxDoNotDisturb::add(std::unique_ptr<DoNotDisturbSource> source) {
    observers_.push_back(
        source->isOn().onChange([this](const std::optional<bool>&) { announceChange(); }));
    sources_.push_back(std::move(source));
}

void LinuxDoNotDisturb::announceChange() {
    std::optional<bool> isOn = false;
    for (const auto& source : sources_) {
        const std::optional<bool>& one = *source->isOn();
        if (one == true) {
            isOn = true;
            break;
        }
        if (!one) {
            isOn = std::nullopt;
        }
    }
    if (isOn && isOn != announced_) {
        announced_ = isOn;
        announced.send({"com.apple.donotdisturb.notification", {{"active", *isOn}}});
    }
}

}  // namespace ostrel
