// What GNUstep lacks of a Mac's names. In front of every file of the run.
#pragma once

#ifdef __OBJC__
#import <AppKit/AppKit.h>

#define NSWorkspaceScreensDidSleepNotification @"NSWorkspaceScreensDidSleepNotification"
#define NSWorkspaceScreensDidWakeNotification @"NSWorkspaceScreensDidWakeNotification"
#define NSCalendarDayChangedNotification @"NSCalendarDayChangedNotification"

// windows_run.mm writes down what is set.
#define NSWindowAnimationBehaviorNone 2
#define NSWindowTitleHidden 1
@interface NSWindow (OfAMac)
- (void)setAnimationBehavior:(NSInteger)behavior;
- (void)setTitleVisibility:(NSInteger)visibility;
- (void)setTitlebarAppearsTransparent:(BOOL)flag;
- (void)setMovable:(BOOL)flag;
@end
#endif
