#include "platform/linux/x11_hotkeys.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/linux/qt_x11.h"
#include "platform/linux/virtual_keys.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kCommand = 256;
constexpr std::uint32_t kShift = 512;
constexpr std::uint32_t kOption = 2048;
constexpr std::uint32_t kControl = 4096;

// Shift, control, Alt and Super by the places that every XKB keymap gives them.
constexpr std::uint16_t kModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
// Caps Lock and Num Lock; a grab without them would not hold while they are on.
constexpr std::uint16_t kLocks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
// The slowest repetition that a keyboard is set to.
constexpr std::uint32_t kLongestRepeatMs = 1000;
constexpr std::uint8_t kSentByProgram = 0x80;

xcb_window_t rootOf(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

std::uint16_t x11Modifiers(std::uint32_t modifiers) {
    std::uint16_t mask = 0;
    mask |= (modifiers & kCommand) != 0 ? XCB_MOD_MASK_4 : 0;
    mask |= (modifiers & kShift) != 0 ? XCB_MOD_MASK_SHIFT : 0;
    mask |= (modifiers & kOption) != 0 ? XCB_MOD_MASK_1 : 0;
    mask |= (modifiers & kControl) != 0 ? XCB_MOD_MASK_CONTROL : 0;
    return mask;
}

void release(xcb_connection_t* connection, std::uint8_t keycode, std::uint16_t modifiers) {
    for (const std::uint16_t locks : kLocks) {
        xcb_ungrab_key(connection, keycode, rootOf(connection),
                       static_cast<std::uint16_t>(modifiers | locks));
    }
    xcb_flush(connection);
}

// All of it or nothing.
bool grab(xcb_connection_t* connection, std::uint8_t keycode, std::uint16_t modifiers) {
    bool isOurs = true;
    for (const std::uint16_t locks : kLocks) {
        const auto cookie = xcb_grab_key_checked(connection, 1, rootOf(connection),
                                                 static_cast<std::uint16_t>(modifiers | locks),
                                                 keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        if (xcb_generic_error_t* error = xcb_request_check(connection, cookie)) {
            std::free(error);
            isOurs = false;
        }
    }
    if (!isOurs) {
        release(connection, keycode, modifiers);
    }
    return isOurs;
}

}  // namespace

class X11Hotkeys::GrabRegistration : public Registration {
  public:
    GrabRegistration(X11Hotkeys& owner, Grabs::iterator grab) : owner_(owner), grab_(grab) {}
    GrabRegistration(const GrabRegistration&) = delete;
    GrabRegistration& operator=(const GrabRegistration&) = delete;
    ~GrabRegistration() override {
        if (xcb_connection_t* connection = qtX11Connection()) {
            release(connection, grab_->keycode, grab_->modifiers);
        }
        owner_.grabs_.erase(grab_);
    }

  private:
    X11Hotkeys& owner_;
    Grabs::iterator grab_;
};

X11Hotkeys::X11Hotkeys() {
    if (qtX11Connection()) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
}

bool X11Hotkeys::isPossible() {
    xcb_connection_t* connection = qtX11Connection();
    return connection != nullptr && !isXInsideWayland(connection);
}

X11Hotkeys::~X11Hotkeys() {
    if (auto* application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

std::unique_ptr<GlobalHotkeys::Registration> X11Hotkeys::add(std::uint32_t keyCode,
                                                             std::uint32_t modifiers,
                                                             std::function<void()> onPress) {
    xcb_connection_t* connection = qtX11Connection();
    const auto keycode = x11KeycodeOf(keyCode);
    const std::uint16_t mask = x11Modifiers(modifiers);
    // Without a modifier the key would be lost to everybody else.
    if (!connection || !keycode || mask == 0 || !grab(connection, *keycode, mask)) {
        return nullptr;
    }
    grabs_.push_front({*keycode, mask, std::move(onPress)});
    return std::make_unique<GrabRegistration>(*this, grabs_.begin());
}

bool X11Hotkeys::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (event->response_type == XCB_KEY_PRESS) {
        return handlePress(*static_cast<const xcb_key_press_event_t*>(message));
    }
    if ((event->response_type & ~kSentByProgram) == XCB_KEY_RELEASE) {
        const auto* released = static_cast<const xcb_key_release_event_t*>(message);
        if (released->detail == heldKeycode_) {
            releasedAtMs_ = released->time;
        }
    }
    return false;
}

bool X11Hotkeys::handlePress(const xcb_key_press_event_t& event) {
    const auto found = std::ranges::find_if(grabs_, [&event](const Grab& grab) {
        return grab.keycode == event.detail && grab.modifiers == (event.state & kModifiers);
    });
    if (found == grabs_.end()) {
        return false;
    }
    if (!isRepeat(event)) {
        const std::function<void()> onPress = found->onPress;
        onPress();
    }
    return true;
}

// A key that is held down goes up and down at one instant, or only down, again and again.
bool X11Hotkeys::isRepeat(const xcb_key_press_event_t& event) {
    const bool isSame = event.detail == heldKeycode_;
    const bool wasReleased = releasedAtMs_ && *releasedAtMs_ != event.time;
    const bool repeats = isSame && !wasReleased && event.time - pressedAtMs_ <= kLongestRepeatMs;
    heldKeycode_ = event.detail;
    pressedAtMs_ = event.time;
    releasedAtMs_.reset();
    return repeats;
}

}  // namespace ostrel
