// Runs platform/macos on GNUstep, whose Foundation and AppKit do what a Mac's do, as far as they
// go.
#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#include <objc/runtime.h>

namespace {

using AddTimer = void (*)(id, SEL, NSTimer*, NSString*);
AddTimer addTimer = nullptr;

// GNUstep takes NSRunLoopCommonModes for a mode like any other.
void addTimerInCommonModes(id loop, SEL command, NSTimer* timer, NSString* mode) {
    if (![mode isEqualToString:NSRunLoopCommonModes]) {
        return addTimer(loop, command, timer, mode);
    }
    for (NSString* common in
         @[ NSDefaultRunLoopMode, NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode ]) {
        addTimer(loop, command, timer, common);
    }
}

}  // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        // The code is written for automatic reference counting, which the compiler does not do for
        // this runtime: here nothing is ever freed, so that nothing is freed too early.
        [NSAutoreleasePool enableRelease:NO];
        const Method method = class_getInstanceMethod([NSRunLoop class], @selector(addTimer:
                                                                                    forMode:));
        addTimer = reinterpret_cast<AddTimer>(method_getImplementation(method));
        method_setImplementation(method, reinterpret_cast<IMP>(addTimerInCommonModes));
        ::testing::InitGoogleTest(&argc, argv);
        return RUN_ALL_TESTS();
    }
}
