#include "app/desktop/session_bus_keeper.h"

#include "platform/linux/temporary_folder.h"
#include "screens/linux/status_bus.h"

namespace ostrel {
namespace {

// A session bus at an address that is known before it starts.
class LateBus {
  public:
    LateBus() = default;
    LateBus(const LateBus&) = delete;
    LateBus& operator=(const LateBus&) = delete;
    ~LateBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

    void start() {
        daemon_.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"),
             QStringLiteral("--print-address"), QStringLiteral("--address=") + address()});
        ASSERT_TRUE(daemon_.waitForStarted() && daemon_.waitForReadyRead());
    }
    [[nodiscard]] QString address() const {
        return QStringLiteral("unix:path=%1/bus")
            .arg(QString::fromStdString(folder_.path().string()));
    }
    [[nodiscard]] QDBusConnection connect(const QString& name) const {
        return QDBusConnection::connectToBus(address(), name);
    }

  private:
    TemporaryFolder folder_;
    QProcess daemon_;
};

TEST(SessionBusKeeper, FindsABusThatStartsLater) {
    LateBus bus;
    SessionBusKeeper keeper(bus.connect(QStringLiteral("none")), bus.address());
    int comings = 0;
    const Subscription watching = keeper.came.subscribe([&comings] { ++comings; });
    EXPECT_FALSE(keeper.bus());
    bus.start();
    EXPECT_TRUE(runUntil([&] { return comings == 1; }));
    EXPECT_TRUE(keeper.bus() && keeper.bus()->isConnected());
}

}  // namespace
}  // namespace ostrel
