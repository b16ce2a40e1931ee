// The windows' properties and the displays. Needs a display.
#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

#include "platform/macos/screen_displays.h"
#include "platform/macos/window_bridge.h"

namespace {

// What GNUstep's windows have no place for, by the name of the property.
std::map<std::string, long> setOnWindow;

}  // namespace

@interface WindowOfAMac : NSWindow
@end

@implementation WindowOfAMac
- (void)setAnimationBehavior:(NSInteger)behavior {
    setOnWindow["animationBehavior"] = behavior;
}
- (void)setTitleVisibility:(NSInteger)visibility {
    setOnWindow["titleVisibility"] = visibility;
}
- (void)setTitlebarAppearsTransparent:(BOOL)flag {
    setOnWindow["titlebarAppearsTransparent"] = flag;
}
- (void)setMovable:(BOOL)flag {
    setOnWindow["movable"] = flag;
}
- (void)setCollectionBehavior:(NSWindowCollectionBehavior)behavior {
    setOnWindow["collectionBehavior"] = static_cast<long>(behavior);
}
@end

namespace ostrel {
namespace {

// On all Spaces, stationary, in no cycle, beside full screen.
constexpr long kEverywhere = 1 + 16 + 64 + 256;

struct WindowsRun : ::testing::Test {
    void SetUp() override {
        if (!std::getenv("DISPLAY")) {
            GTEST_SKIP() << "needs a display";
        }
        [NSApplication sharedApplication];
        setOnWindow.clear();
        window = [[WindowOfAMac alloc] initWithContentRect:NSMakeRect(0, 0, 300, 200)
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
        [window setHidesOnDeactivate:YES];
        [window setMovableByWindowBackground:YES];
        [window setIgnoresMouseEvents:YES];
        [window setAlphaValue:0.5];
    }
    void TearDown() override { [window close]; }

    [[nodiscard]] void* view() const { return (void*)[window contentView]; }

    NSWindow* window = nil;
};

TEST_F(WindowsRun, ABreakStandsOverEverythingAndStaysThere) {
    WindowBridge::coverDisplay(view());
    EXPECT_EQ([window level], 1000);
    EXPECT_FALSE([window isOpaque]);
    EXPECT_FALSE([window hasShadow]);
    EXPECT_TRUE([[window backgroundColor] isEqual:[NSColor clearColor]]);
    EXPECT_EQ([window alphaValue], 1);
    EXPECT_FALSE([window ignoresMouseEvents]);
    EXPECT_TRUE([window acceptsMouseMovedEvents]);
    EXPECT_FALSE([window hidesOnDeactivate]);
    EXPECT_FALSE([window isReleasedWhenClosed]);
    EXPECT_FALSE([window isMovableByWindowBackground]);
    const std::map<std::string, long> expected = {{"animationBehavior", 2},
                                                  {"collectionBehavior", kEverywhere},
                                                  {"movable", 0},
                                                  {"titleVisibility", 1},
                                                  {"titlebarAppearsTransparent", 1}};
    EXPECT_EQ(setOnWindow, expected);
}

TEST_F(WindowsRun, ACardFloatsOverOtherProgramsBelowABreak) {
    WindowBridge::floatBesideWork(view());
    EXPECT_EQ([window level], NSStatusWindowLevel);
    EXPECT_EQ(setOnWindow["collectionBehavior"], kEverywhere);
    EXPECT_FALSE([window hidesOnDeactivate]);
    EXPECT_FALSE([window isReleasedWhenClosed]);
    EXPECT_EQ([window alphaValue], 0.5) << "its fading is the toolkit's";
    WindowBridge::floatBesideWork(nullptr);  // no window: passed over
}

TEST_F(WindowsRun, DisplaysAreTheScreensAndAChangeOfThemIsToldOnce) {
    const ScreenDisplays displays;
    const auto current = displays.current();
    ASSERT_EQ(current.size(), [[NSScreen screens] count]);
    ASSERT_FALSE(current.empty());
    const NSRect first = [[[NSScreen screens] objectAtIndex:0] frame];
    EXPECT_EQ(current.front().frame, (Rect{0, 0, first.size.width, first.size.height}));
    EXPECT_EQ(displays.mainDisplayID(), current.front().displayID);
    int changes = 0;
    const Subscription heard = displays.changed.subscribe([&changes] { ++changes; });
    [[NSNotificationCenter defaultCenter]
        postNotificationName:NSApplicationDidChangeScreenParametersNotification
                      object:NSApp];
    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace ostrel
