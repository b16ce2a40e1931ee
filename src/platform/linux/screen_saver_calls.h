#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <set>

namespace ostrel {

// The processes that keep the display awake through org.freedesktop.ScreenSaver.
//
// That service cannot be asked who does, so the calls to it are overheard, by a connection that
// turns into a monitor of the bus (org.freedesktop.DBus.Monitoring). What was called before is not
// known, nor anything where the bus does not let us listen. A caller that leaves the bus, and a
// service that goes, end what was asked of it. Who gives sound alone as the reason does not count.
//
// Nothing here waits for an answer.
class ScreenSaverCalls : public QDBusVirtualObject {
    Q_OBJECT

  public:
    // `monitor` is a connection to the session bus that nobody else uses.
    ScreenSaverCalls(QDBusConnection sessionBus, QDBusConnection monitor);
    ~ScreenSaverCalls() override;

    [[nodiscard]] std::set<std::int64_t> processes() const;

    // Whether somebody who gives that reason shows something, and does not only play it.
    [[nodiscard]] static bool concernsPicture(const QString& reason);

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;
    QString introspect(const QString& path) const override;

  private:
    // The answers with the numbers of the calls are not overheard: of one caller's calls it is
    // known how many are in force, not which.
    struct Caller {
        std::optional<std::int64_t> process;
        int pictures = 0;
        int sounds = 0;
    };

    void listen();
    void begin(const QString& caller, const QString& reason);
    void end(const QString& caller);
    void forget(const QString& caller);

    QDBusConnection bus_;
    QDBusConnection monitor_;
    bool hasService_ = false;
    std::map<QString, Caller> callers_;  // by unique name
    QDBusServiceWatcher leaving_;
};

}  // namespace ostrel
