#include "platform/macos/keyboard_loan.h"

#import <AppKit/AppKit.h>

#include "platform/macos/keyboard_debt.h"

namespace ostrel {
namespace {

std::optional<std::int64_t> processOf(NSRunningApplication* application) {
    return application ? std::optional<std::int64_t>(application.processIdentifier) : std::nullopt;
}

void handOver(NSRunningApplication* own, NSRunningApplication* next) {
    if (@available(macOS 14.0, *)) {
        [[NSApplication sharedApplication] yieldActivationToApplication:next];
        [next activateFromApplication:own options:0];
    } else {
        [next activateWithOptions:0];
    }
}

}  // namespace

struct KeyboardLoan::Impl {
    NSRunningApplication* lender = nil;
};

KeyboardLoan::KeyboardLoan() : impl_(std::make_unique<Impl>()) {}

KeyboardLoan::~KeyboardLoan() {
    giveBack();
}

bool KeyboardLoan::take(void* view) {
    NSApplication* application = [NSApplication sharedApplication];
    NSWindow* window = [(__bridge NSView*)view window];
    if (application.active && window.keyWindow) {
        return true;
    }
    if (!impl_->lender) {
        impl_->lender = [NSWorkspace sharedWorkspace].frontmostApplication;
    }
    // A break begins unasked, and -activate is no more than a request of a program in front.
    [application activateIgnoringOtherApps:YES];
    [window makeKeyAndOrderFront:nil];
    return application.active && window.keyWindow;
}

void KeyboardLoan::giveBack() {
    NSRunningApplication* own = [NSRunningApplication currentApplication];
    NSRunningApplication* front = [NSWorkspace sharedWorkspace].frontmostApplication;
    if (owesKeyboard(processOf(impl_->lender), own.processIdentifier, processOf(front))) {
        handOver(own, impl_->lender);
    }
    impl_->lender = nil;
}

}  // namespace ostrel
