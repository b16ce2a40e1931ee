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

}  // namespace

void WindowBridge::coverDisplay(void* view) {
    NSWindow* window = windowOf(view);
    standStill(window);
    [window setLevel:NSScreenSaverWindowLevel];
    [window setCollectionBehavior:NSWindowCollectionBehaviorCanJoinAllSpaces |
                                  NSWindowCollectionBehaviorStationary |
                                  NSWindowCollectionBehaviorIgnoresCycle |
                                  NSWindowCollectionBehaviorFullScreenAuxiliary];
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
    [window setLevel:NSStatusWindowLevel];
    [window setCollectionBehavior:NSWindowCollectionBehaviorCanJoinAllSpaces |
                                  NSWindowCollectionBehaviorStationary |
                                  NSWindowCollectionBehaviorIgnoresCycle |
                                  NSWindowCollectionBehaviorFullScreenAuxiliary];
}

}  // namespace ostrel
