#pragma once

#include "../Foundation/Foundation.h"

#pragma clang assume_nonnull begin

typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
} NSApplicationActivationPolicy;

typedef CK_OPTIONS(NSUInteger, NSApplicationActivationOptions){NSApplicationActivateAllWindows = 1 << 0};
@interface NSRunningApplication : NSObject
@property(nullable, readonly, copy) NSString* bundleIdentifier CK_MACOS(10.6);
@property(nullable, readonly, copy) NSString* localizedName CK_MACOS(10.6);
@property(readonly) pid_t processIdentifier CK_MACOS(10.6);
@property(readonly) NSApplicationActivationPolicy activationPolicy CK_MACOS(10.6);
@property(class, readonly, strong) NSRunningApplication* currentApplication CK_MACOS(10.6);
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier
    CK_MACOS(10.6);
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options CK_MACOS(10.6);
- (BOOL)activateFromApplication:(NSRunningApplication*)application
                        options:(NSApplicationActivationOptions)options CK_MACOS(14.0);
@end

// Main thread only.
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication CK_MACOS(10.7);
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications CK_MACOS(10.6);
@end

// Sent by the workspace's own centre alone.
CK_EXTERN NSNotificationName const NSWorkspaceWillSleepNotification CK_MACOS(10.3);
CK_EXTERN NSNotificationName const NSWorkspaceDidWakeNotification CK_MACOS(10.3);
CK_EXTERN NSNotificationName const NSWorkspaceScreensDidSleepNotification CK_MACOS(10.6);
CK_EXTERN NSNotificationName const NSWorkspaceScreensDidWakeNotification CK_MACOS(10.6);
CK_EXTERN NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification CK_MACOS(10.3);
CK_EXTERN NSNotificationName const NSWorkspaceSessionDidResignActiveNotification CK_MACOS(10.3);

// Sent by the default centre.
CK_EXTERN NSNotificationName const NSApplicationDidBecomeActiveNotification;

#pragma clang assume_nonnull end
