#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/api/displays.h"
#include "records/break_log_entry.h"

namespace ostrel {

class OverlayManager;

// What a key press on an overlay did.
enum class KeyOutcome { skip, done, postpone, ignored };
constexpr std::array<std::string_view, 4> enumNames(KeyOutcome) {
    return {"skip", "done", "postpone", "ignored"};
}

// What a window shows: the whole break, or on all other displays the tint and the time.
enum class Role { primary, secondary };
constexpr std::array<std::string_view, 2> enumNames(Role) {
    return {"primary", "secondary"};
}

// One display as the overlay manager sees it.
struct ScreenSnapshot {
    std::uint32_t displayID = 0;
    Rect frame;

    bool operator==(const ScreenSnapshot&) const = default;
};

class OverlayWindow;

// Hears of the windows; the manager is one.
class OverlayWindowListener {
  public:
    virtual ~OverlayWindowListener() = default;

    // Decides what a key press does, by virtual key code. `ignored` passes the key on to the
    // window's own handling; anything else consumes it.
    virtual KeyOutcome handleKey(std::uint32_t virtualKeyCode) = 0;

    // The window has put its first picture on the screen. Sent once.
    virtual void didPaint(OverlayWindow& window) = 0;
};

// A window that covers one display with the break: borderless, above every other window (panels and
// full-screen programs included), on every virtual desktop.
//
// It draws OverlayManager::activeSession() and calls the manager's actions. Destroying it takes it
// off the screen at once and lets go of the keyboard.
class OverlayWindow {
  public:
    virtual ~OverlayWindow() = default;

    [[nodiscard]] virtual std::uint32_t displayID() const = 0;
    [[nodiscard]] virtual Role role() const = 0;

    // Moves the window to the display's new frame or gives it another role. Without a change it
    // must not flicker.
    virtual void cover(const ScreenSnapshot& screen, Role role) = 0;

    // All key presses come to this window until it lets go, fades or dies. Asked for only after
    // the first paint, of one window at a time.
    virtual void takeKeyboard() = 0;
    virtual void releaseKeyboard() = 0;

    // Fades out over `seconds`, deaf to keys and clicks; the manager destroys the window then.
    virtual void fadeOut(double seconds) = 0;
};

// Makes windows that are on the screen when make() returns.
class OverlayWindowMaker {
  public:
    virtual ~OverlayWindowMaker() = default;

    // `manager` outlives the window and is its listener.
    virtual std::unique_ptr<OverlayWindow> make(OverlayManager& manager, BreakLogEntry::Kind kind,
                                                const ScreenSnapshot& screen, Role role) = 0;
};

}  // namespace ostrel
