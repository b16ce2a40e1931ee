#include "platform/linux/portal_motion_settings.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <string>

#include "platform/linux/event_loop.h"
#include "platform/linux/portal_appearance_settings.h"
#include "platform/linux/portal_settings.h"
#include "platform/linux/private_bus.h"

namespace ostrel {
namespace {

using Groups = QMap<QString, QVariantMap>;

const QString kClientName = QStringLiteral("client");
const QString kPortalName = QStringLiteral("portal");
const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGnome = QStringLiteral("org.gnome.desktop.interface");
const QString kGnomeKey = QStringLiteral("enable-animations");

QVariant settingsOf(const QString& group, const QString& key, const QVariant& value) {
    return QVariant::fromValue(Groups{{group, {{key, value}}}});
}

// The settings portal of a desktop.
class Portal : public QDBusVirtualObject {
  public:
    explicit Portal(QDBusConnection bus) : bus_(std::move(bus)) {
        qDBusRegisterMetaType<Groups>();
        bus_.registerVirtualObject(kPath, this);
    }
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;
    ~Portal() override {
        bus_.unregisterService(kPortal);
        bus_.unregisterObject(kPath);
    }

    void appear() { EXPECT_TRUE(bus_.registerService(kPortal)); }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        if (call.member() != QStringLiteral("ReadAll")) {
            return false;
        }
        connection.send(call.createReply(reply));
        asked_ = true;
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    // Also what it answers from now on: a question may be on its way.
    void announce(const QString& group, const QString& key, const QVariant& value) {
        reply = settingsOf(group, key, value);
        QDBusMessage signal =
            QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("SettingChanged"));
        signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        bus_.send(signal);
    }

    // Since the last time; waits for it.
    [[nodiscard]] bool wasAsked() {
        const bool asked = runUntil([this] { return asked_; });
        asked_ = false;
        return asked;
    }

    QVariant reply = QVariant::fromValue(Groups());

  private:
    QDBusConnection bus_;
    bool asked_ = false;
};

struct PortalSettingsTest : ::testing::Test {
    PrivateBus bus;

    void SetUp() override {
        if (!bus.isThere()) {
            GTEST_SKIP() << "no dbus-daemon to start";
        }
    }
};

TEST_F(PortalSettingsTest, EveryDesktopsWishForLittleMotionIsUnderstood) {
    struct Case {
        const char* group;
        const char* key;
        QVariant value;
        bool reduce;
    };
    const QVariant nested = QVariant::fromValue(QDBusVariant(false));
    const Case cases[] = {
        {"org.gnome.desktop.interface", "enable-animations", false, true},
        {"org.gnome.desktop.interface", "enable-animations", true, false},
        {"org.gnome.desktop.interface", "enable-animations", nested, true},
        {"org.gnome.desktop.interface", "gtk-theme", QStringLiteral("0"), false},
        {"org.freedesktop.appearance", "reduced-motion", 1U, true},
        {"org.freedesktop.appearance", "reduced-motion", 0U, false},
        {"org.freedesktop.appearance", "enable-animations", false, false},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", QStringLiteral("0"), true},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", 0.0, true},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", QStringLiteral("0.5"), false},
        {"org.kde.kdeglobals.KDE", "AnimationDurationFactor", QStringLiteral("none"), false},
    };
    Portal portal(bus.connection(kPortalName));
    portal.appear();
    for (const Case& c : cases) {
        const std::string label = std::string(c.key) + "=" + c.value.toString().toStdString();
        portal.reply = settingsOf(QLatin1String(c.group), QLatin1String(c.key), c.value);
        const PortalSettings source(bus.connection(kClientName));
        const PortalMotionSettings settings(source);
        EXPECT_FALSE(settings.reduceMotion()) << "before any answer";
        ASSERT_TRUE(portal.wasAsked());
        bus.settle(kClientName, kPortalName);
        EXPECT_TRUE(!c.reduce || runUntil([&] { return settings.reduceMotion(); })) << label;
        EXPECT_EQ(settings.reduceMotion(), c.reduce) << label;
    }
}

TEST_F(PortalSettingsTest, APortalThatAppearsLaterIsAskedAndItsChangesAreFollowed) {
    const PortalSettings source(bus.connection(kClientName));
    const PortalMotionSettings settings(source);
    bus.settle(kClientName, kPortalName);
    EXPECT_FALSE(settings.reduceMotion());

    Portal portal(bus.connection(kPortalName));
    portal.reply = settingsOf(kGnome, kGnomeKey, false);
    portal.appear();
    ASSERT_TRUE(portal.wasAsked());
    EXPECT_TRUE(runUntil([&] { return settings.reduceMotion(); }));

    portal.announce(kGnome, kGnomeKey, true);
    EXPECT_TRUE(runUntil([&] { return !settings.reduceMotion(); }));
    portal.announce(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("reduced-motion"),
                    1U);
    portal.announce(kGnome, QStringLiteral("cursor-blink"), false);
    EXPECT_TRUE(runUntil([&] { return settings.reduceMotion(); }));
}

TEST_F(PortalSettingsTest, NonsenseAnswersAndAMissingBusLeaveAnimationsOn) {
    Portal portal(bus.connection(kPortalName));
    portal.appear();
    for (const QVariant& nonsense :
         {QVariant(7), QVariant(QStringLiteral("a")), QVariant(QVariantMap{{kGnome, false}})}) {
        portal.reply = nonsense;
        const PortalSettings source(bus.connection(kClientName));
        const PortalMotionSettings settings(source);
        ASSERT_TRUE(portal.wasAsked());
        bus.settle(kClientName, kPortalName);
        EXPECT_FALSE(settings.reduceMotion());
    }
    const PortalSettings none(QDBusConnection(QStringLiteral("none")));
    EXPECT_FALSE(PortalMotionSettings(none).reduceMotion());
    qputenv("OSTREL_REDUCE_MOTION", "1");
    EXPECT_TRUE(PortalMotionSettings(none).reduceMotion());
    qunsetenv("OSTREL_REDUCE_MOTION");
}

TEST_F(PortalSettingsTest, TheColourSchemeIsToldAndAMissingOneIsNoPreference) {
    Portal portal(bus.connection(kPortalName));
    portal.appear();
    const QString group = QStringLiteral("org.freedesktop.appearance");
    const QString key = QStringLiteral("color-scheme");
    portal.reply = settingsOf(group, key, 1U);
    const PortalSettings source(bus.connection(kClientName));
    const PortalAppearanceSettings settings(source);
    int changes = 0;
    const Subscription counting = settings.changed.subscribe([&changes] { ++changes; });
    EXPECT_EQ(settings.prefersDark(), std::nullopt) << "before any answer";
    ASSERT_TRUE(portal.wasAsked());
    EXPECT_TRUE(runUntil([&] { return settings.prefersDark() == true; }));

    portal.announce(group, key, 1U);
    portal.announce(group, key, 2U);
    EXPECT_TRUE(runUntil([&] { return settings.prefersDark() == false; }));
    EXPECT_EQ(changes, 2);
    portal.announce(group, key, 0U);
    EXPECT_TRUE(runUntil([&] { return !settings.prefersDark(); }));
    portal.announce(group, key, 1U);
    portal.announce(group, key, QStringLiteral("dark"));
    EXPECT_TRUE(runUntil([&] { return changes == 5; }));
    EXPECT_EQ(settings.prefersDark(), std::nullopt) << "what it does not understand";
}

}  // namespace
}  // namespace ostrel
