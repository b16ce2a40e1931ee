#include "platform/macos/window_bridge.h"

#import <AppKit/AppKit.h>

namespace ostrel {
namespace {

NSWindow* windowOf(void* view) {
    return [(__bridge NSView*)view window];
}

void standStill(NSWindow* window) {
    [window setReleasedWhenClosed:NO];
    [window setHidesOnDeactivate:NO];
    [window setMovable:NO];
    [window setMovableByWindowBackground:NO];
    [window setAnimationBehavior:NSWindowAnimationBehaviorNone];
}

// Also beside a program in full screen, which has a Space to itself.
void standOnEverySpace(NSWindow* window) {
    NSWindowCollectionBehavior behavior = NSWindowCollectionBehaviorCanJoinAllSpaces;
    behavior |= NSWindowCollectionBehaviorStationary;
    behavior |= NSWindowCollectionBehaviorIgnoresCycle;
    behavior |= NSWindowCollectionBehaviorFullScreenAuxiliary;
    [window setCollectionBehavior:behavior];
}

}  // namespace

void WindowBridge::coverDisplay(void* view) {
    NSWindow* window = windowOf(view);
    standStill(window);
    standOnEverySpace(window);
    [window setLevel:NSScreenSaverWindowLevel];
    [window setTitlebarAppearsTransparent:YES];
    [window setTitleVisibility:NSWindowTitleHidden];
    [window setBackgroundColor:[NSColor clearColor]];
    [window setOpaque:NO];
    [window setHasShadow:NO];
    [window setIgnoresMouseEvents:NO];
    [window setAcceptsMouseMovedEvents:YES];
    [window setAlphaValue:1];
}

void WindowBridge::floatBesideWork(void* view) {
    NSWindow* window = windowOf(view);
    standStill(window);
    standOnEverySpace(window);
    [window setLevel:NSStatusWindowLevel];
}

}  // namespace ostrel
