#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <functional>

namespace ostrel {

// Tells of an X11 tray, the one that is there and those that come later. Without X11 there is none.
class TrayWatch : public QObject, public QAbstractNativeEventFilter {
  public:
    // `onTray` is never called from within the constructor.
    explicit TrayWatch(std::function<void()> onTray);
    TrayWatch(const TrayWatch&) = delete;
    TrayWatch& operator=(const TrayWatch&) = delete;
    ~TrayWatch() override;

    [[nodiscard]] static bool isThere();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void look();

    std::function<void()> onTray_;
};

}  // namespace ostrel
