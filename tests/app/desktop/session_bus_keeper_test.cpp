#include "app/desktop/session_bus_keeper.h"

#include <memory>

#include "platform/linux/temporary_folder.h"
#include "screens/status_bus.h"

namespace ostrel {
namespace {

// A session bus that comes back at the address where it was.
class RestartedBus {
  public:
    RestartedBus() = default;
    RestartedBus(const RestartedBus&) = delete;
    RestartedBus& operator=(const RestartedBus&) = delete;
    ~RestartedBus() { end(); }

    void start() {
        daemon_ = std::make_unique<QProcess>();
        daemon_->start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"),
             QStringLiteral("--print-address"), QStringLiteral("--address=") + address()});
        ASSERT_TRUE(daemon_->waitForStarted() && daemon_->waitForReadyRead());
    }
    void end() {
        if (daemon_) {
            daemon_->kill();
            daemon_->waitForFinished();
        }
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
    std::unique_ptr<QProcess> daemon_;
};

struct Heard {
    explicit Heard(SessionBusKeeper& keeper)
        : came(keeper.came.subscribe([this] { ++comings; })),
          lost(keeper.lost.subscribe([this] { ++losses; })) {}

    int comings = 0;
    int losses = 0;
    Subscription came;
    Subscription lost;
};

TEST(SessionBusKeeper, FindsABusThatStartsLater) {
    RestartedBus bus;
    SessionBusKeeper keeper(bus.connect(QStringLiteral("none")), bus.address());
    const Heard heard(keeper);
    EXPECT_FALSE(keeper.bus());
    bus.start();
    EXPECT_TRUE(runUntil([&] { return heard.comings == 1; }));
    EXPECT_TRUE(keeper.bus() && keeper.bus()->isConnected());
}

}  // namespace
}  // namespace ostrel
