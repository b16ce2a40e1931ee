// What GNUstep lacks of a Mac's names. In front of every file of the run.
#pragma once

#ifdef __OBJC__
#import <AppKit/AppKit.h>

#define NSWorkspaceScreensDidSleepNotification @"NSWorkspaceScreensDidSleepNotification"
#define NSWorkspaceScreensDidWakeNotification @"NSWorkspaceScreensDidWakeNotification"
#define NSCalendarDayChangedNotification @"NSCalendarDayChangedNotification"
#endif
