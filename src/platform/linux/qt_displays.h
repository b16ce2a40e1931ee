#pragma once

#include <map>
#include <memory>

#include "platform/api/displays.h"

class QObject;
class QScreen;

namespace ostrel {

// The screens that Qt knows. Needs a QGuiApplication that outlives it.
//
// A screen of no size is no display. Nor is the placeholder that Qt shows on X11 while no monitor
// is connected, unless there is nothing else: an X server without monitors to tell of has but that.
//
// However many screens change in one turn of the event loop, `changed` is sent once, in the next.
class QtDisplays : public Displays {
  public:
    QtDisplays();
    QtDisplays(const QtDisplays&) = delete;
    QtDisplays& operator=(const QtDisplays&) = delete;
    ~QtDisplays() override;

    // By number, which is by age.
    [[nodiscard]] std::vector<Display> current() const override;

    // The display with the active window where the desktop tells, else the one with the pointer,
    // else the primary one.
    [[nodiscard]] std::optional<std::uint32_t> mainDisplayID() const override;

    // Null when that display is gone.
    [[nodiscard]] QScreen* screen(std::uint32_t displayID) const;

  private:
    void add(QScreen* screen);
    void changeLater();
    [[nodiscard]] bool isDisplay(const QScreen* screen) const;
    [[nodiscard]] QScreen* activeScreen() const;
    [[nodiscard]] std::optional<std::uint32_t> numberOf(const QScreen* screen) const;

    std::map<std::uint32_t, QScreen*> screens_;
    std::uint32_t lastNumber_ = 0;
    bool changePending_ = false;
    std::unique_ptr<QObject> connections_;
};

}  // namespace ostrel
