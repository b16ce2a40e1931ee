#pragma once

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <list>
#include <optional>

#include "platform/api/global_hotkeys.h"

struct xcb_key_press_event_t;

namespace ostrel {

// Chords as passive grabs of the X server's keys, whatever locks are on and whichever layout is
// active. A press that reaches one of our windows, because it holds the keyboard, counts as well.
//
// Knows no chord where Qt does not run on X11. Needs a QGuiApplication.
class X11Hotkeys : public GlobalHotkeys, public QAbstractNativeEventFilter {
  public:
    X11Hotkeys();

    // Whether a press would reach us while another program has the keyboard.
    [[nodiscard]] static bool isPossible();

    X11Hotkeys(const X11Hotkeys&) = delete;
    X11Hotkeys& operator=(const X11Hotkeys&) = delete;
    ~X11Hotkeys() override;

    [[nodiscard]] std::unique_ptr<Registration> add(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    std::function<void()> onPress) override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    struct Grab {
        std::uint8_t keycode = 0;
        std::uint16_t modifiers = 0;
        std::function<void()> onPress;
    };
    using Grabs = std::list<Grab>;
    class GrabRegistration;

    bool handlePress(const xcb_key_press_event_t& event);
    [[nodiscard]] bool isRepeat(const xcb_key_press_event_t& event);

    Grabs grabs_;
    // Of the key that went down last.
    std::uint8_t heldKeycode_ = 0;
    std::uint32_t pressedAtMs_ = 0;
    std::optional<std::uint32_t> releasedAtMs_;
};

}  // namespace ostrel
