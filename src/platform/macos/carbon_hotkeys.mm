#include "platform/macos/carbon_hotkeys.h"

#import <Carbon/Carbon.h>

#include <utility>

#include "platform/macos/hotkey_presses.h"

namespace ostrel {
namespace {

OSStatus handlePress(EventHandlerCallRef, EventRef event, void* presses) {
    EventHotKeyID pressed{};
    const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID,
                                              nullptr, sizeof pressed, nullptr, &pressed);
    const bool isOurs = status == noErr && static_cast<const HotkeyPresses*>(presses)->press(
                                               pressed.signature, pressed.id);
    return isOurs ? OSStatus{noErr} : OSStatus{eventNotHandledErr};
}

}  // namespace

struct CarbonHotkeys::Impl {
    Impl() {
        const EventTypeSpec presses{kEventClassKeyboard, kEventHotKeyPressed};
        InstallEventHandler(GetApplicationEventTarget(), handlePress, 1, &presses, &known,
                            &handler);
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        if (handler) {
            RemoveEventHandler(handler);
        }
    }

    class Held : public Registration {
      public:
        Held(std::shared_ptr<Impl> owner, std::uint32_t number, EventHotKeyRef hotkey)
            : owner_(std::move(owner)), number_(number), hotkey_(hotkey) {}
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;
        ~Held() override {
            UnregisterEventHotKey(hotkey_);
            owner_->known.remove(number_);
        }

      private:
        std::shared_ptr<Impl> owner_;
        std::uint32_t number_;
        EventHotKeyRef hotkey_;
    };

    HotkeyPresses known;
    EventHandlerRef handler = nullptr;
};

CarbonHotkeys::CarbonHotkeys() : impl_(std::make_shared<Impl>()) {}
CarbonHotkeys::~CarbonHotkeys() = default;

std::unique_ptr<GlobalHotkeys::Registration> CarbonHotkeys::add(std::uint32_t keyCode,
                                                                std::uint32_t modifiers,
                                                                std::function<void()> onPress) {
    if (!impl_->handler || !HotkeyPresses::isChord(keyCode, modifiers)) {
        return nullptr;
    }
    const std::uint32_t number = impl_->known.add(std::move(onPress));
    EventHotKeyRef hotkey = nullptr;
    const OSStatus status =
        RegisterEventHotKey(keyCode, modifiers, {HotkeyPresses::kSignature, number},
                            GetApplicationEventTarget(), 0, &hotkey);
    if (status != noErr || !hotkey) {
        impl_->known.remove(number);
        return nullptr;
    }
    return std::make_unique<Impl::Held>(impl_, number, hotkey);
}

}  // namespace ostrel
