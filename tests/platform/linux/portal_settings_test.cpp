#include "platform/linux/portal_motion_settings.h"

#include <gtest/gtest.h>

#include <QDBusMetaType>
#include <QDBusVariant>
#include <string>

#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"
#include "platform/linux/portal_appearance_settings.h"
#include "platform/linux/portal_settings.h"

namespace ostrel {
namespace {

using Groups = QMap<QString, QVariantMap>;

const QString kClientName = "client";
const QString kPortalName = "portal";

// The settings portal of a desktop.
class Portal : public FakeBusService {
  public:
    explicit Portal(PrivateBus& bus)
        : FakeBusService(bus, kPortalName, "org.freedesktop.portal.Desktop") {
        qDBusRegisterMetaType<Groups>();
    }

    void set(const QString& group, const QString& key, const QVariant& value) {
        answer("ReadAll", {QVariant::fromValue(Groups{{group, {{key, value}}}})});
    }
    // Also what it answers from now on: a question may be on its way.
    void announce(const QString& group, const QString& key, const QVariant& value) {
        set(group, key, value);
        send("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged",
             {group, key, QVariant::fromValue(QDBusVariant(value))});
    }
};

using PortalSettingsTest = BusTest;

TEST_F(PortalSettingsTest, EveryDesktopsWishForLittleMotionIsUnderstood) {
    const QVariant nested = QVariant::fromValue(QDBusVariant(false));
    const struct {
        const char* group;
        const char* key;
        QVariant value;
        bool reduce;
    } cases[] = {
        {"org.gnome.desktop.interface", "enable-animations", false, true},
        {"org.gnome.desktop.interface", "enable-animations", true, false},
        {"org.gnome.desktop.interface", "enable-animations", nested, true},
        {"org.freedesktop.appearance", "reduced-motion", 1U, true},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", "0", true},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", "0.5", false},
    };
    Portal portal(bus);
    portal.appear();
    for (const auto& [group, key, value, reduce] : cases) {
        SCOPED_TRACE(key);
        portal.set(QLatin1String(group), QLatin1String(key), value);
        const PortalSettings source(bus.connection(kClientName));
        const PortalMotionSettings settings(source);
        EXPECT_FALSE(settings.reduceMotion()) << "before any answer";
        ASSERT_TRUE(runUntil([&] { return !portal.questions.empty(); }));
        portal.questions.clear();
        bus.settle(kClientName, kPortalName);
        EXPECT_TRUE(!reduce || runUntil([&] { return settings.reduceMotion(); }));
        EXPECT_EQ(settings.reduceMotion(), reduce);
    }
}

TEST_F(PortalSettingsTest, APortalThatAppearsLaterOnANewBusIsAskedAndItsChangesAreFollowed) {
    PortalSettings source(QDBusConnection("none"));
    source.adopt(bus.connection(kClientName));
    const PortalAppearanceSettings settings(source);
    int changes = 0;
    const Subscription counting = settings.changed.subscribe([&changes] { ++changes; });
    EXPECT_EQ(settings.prefersDark(), std::nullopt);
    const QString group = "org.freedesktop.appearance";
    const QString key = "color-scheme";
    Portal portal(bus);
    portal.set(group, key, 1U);
    portal.appear();
    EXPECT_TRUE(runUntil([&] { return settings.prefersDark() == true; }));
    portal.announce(group, key, 2U);
    EXPECT_TRUE(runUntil([&] { return settings.prefersDark() == false; }));
    portal.announce(group, key, "dark");
    EXPECT_TRUE(runUntil([&] { return !settings.prefersDark(); })) << "not understood";
    EXPECT_EQ(changes, 3);
}

}  // namespace
}  // namespace ostrel
