#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <functional>
#include <memory>

class QDBusServiceWatcher;

namespace ostrel {

// Waits for something that can show a status item: a StatusNotifierHost on the session bus or an
// X11 tray.
//
// The toolkit looks for one a single time, at the first icon; an icon made too early is never seen.
class TrayWatch : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    // `onAvailable` is called once, never from within the constructor. Without a bus and without
    // X11 it never is.
    explicit TrayWatch(std::function<void()> onAvailable);
    ~TrayWatch() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    Q_SLOT void askForHost();
    void lookForTray();
    void found();

    std::function<void()> onAvailable_;
    std::unique_ptr<QDBusServiceWatcher> serviceWatcher_;
};

}  // namespace ostrel
