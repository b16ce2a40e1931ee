// AppKit, as far as it is called here.
#pragma once
#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

#include "NSWorkspace.h"

#pragma clang assume_nonnull begin
@class NSAppearance, NSButton, NSImage, NSMenu, NSScreen, NSStatusBarButton, NSStatusItem, NSView, NSWindow;

typedef NSString* NSAppearanceName;
CK_EXTERN NSAppearanceName const NSAppearanceNameAqua CK_MACOS(10.9);
CK_EXTERN NSAppearanceName const NSAppearanceNameDarkAqua CK_MACOS(10.14);
@interface NSAppearance : NSObject
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances
    CK_MACOS(10.14);
@end

@interface NSColor : NSObject
@property(class, readonly, strong) NSColor* clearColor;
@end

@interface NSImage : NSObject
- (nullable instancetype)initWithData:(NSData*)data;
@property NSSize size;
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSResponder : NSObject
@end

@interface NSView : NSResponder
@property(nullable, readonly, unsafe_unretained) NSWindow* window;
@property(nullable, copy) NSString* toolTip;
- (void)setAccessibilityLabel:(nullable NSString*)label CK_MACOS(10.10);
@end

typedef CGFloat NSFontWeight;
CK_EXTERN NSFontWeight const NSFontWeightRegular CK_MACOS(10.11);
@interface NSFont : NSObject
@property(readonly) CGFloat pointSize;
+ (NSFont*)menuBarFontOfSize:(CGFloat)size;
+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight CK_MACOS(10.11);
@end

typedef CK_ENUM(NSUInteger, NSCellImagePosition){NSImageLeading CK_MACOS(10.12) = 7};
@interface NSButton : NSView
@property(nullable, strong) NSFont* font;
@property(copy) NSString* title;
@property(nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@end

typedef NSString* NSDeviceDescriptionKey;
@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, nullable, readonly, strong) NSScreen* mainScreen;
@property(readonly) NSRect frame;
@property(readonly, copy) NSDictionary<NSDeviceDescriptionKey, id>* deviceDescription;
@end

typedef CK_OPTIONS(NSUInteger, NSWindowCollectionBehavior){
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0, NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary CK_MACOS(10.7) = 1 << 8};
typedef CK_ENUM(NSInteger, NSWindowAnimationBehavior){NSWindowAnimationBehaviorNone = 2};
typedef CK_ENUM(NSInteger, NSWindowTitleVisibility){NSWindowTitleHidden = 1};
typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSStatusWindowLevel = 25, NSScreenSaverWindowLevel = 1000;
@interface NSWindow : NSResponder
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property NSWindowAnimationBehavior animationBehavior CK_MACOS(10.7);
@property NSWindowTitleVisibility titleVisibility CK_MACOS(10.10);
@property BOOL titlebarAppearsTransparent CK_MACOS(10.10);
@property(null_resettable, copy) NSColor* backgroundColor;
@property(getter=isOpaque) BOOL opaque;
@property BOOL hasShadow;
@property CGFloat alphaValue;
@property BOOL acceptsMouseMovedEvents;
@property BOOL ignoresMouseEvents;
@property BOOL hidesOnDeactivate;
@property(getter=isMovable) BOOL movable CK_MACOS(10.6);
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(readonly, getter=isKeyWindow) BOOL keyWindow;
- (void)makeKeyAndOrderFront:(nullable id)sender;
@end

@interface NSMenu : NSObject
@end

@interface NSStatusBarButton : NSButton
@end
static const CGFloat NSVariableStatusItemLength = -1;
@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button CK_MACOS(10.10);
@property(nullable, strong) NSMenu* menu;
@property(null_resettable, copy) NSString* autosaveName CK_MACOS(10.12);
@end
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(readonly, getter=isActive) BOOL active;
@property(readonly, strong) NSAppearance* effectiveAppearance CK_MACOS(10.14);
- (void)activateIgnoringOtherApps:(BOOL)flag CK_MACOS(10.0);
- (void)yieldActivationToApplication:(NSRunningApplication*)application CK_MACOS(14.0);
@end
CK_EXTERN NSNotificationName const NSApplicationDidChangeScreenParametersNotification;

@interface NSWorkspace (NSWorkspaceAccessibilityDisplay)
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion CK_MACOS(10.12);
@end
CK_EXTERN NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
    CK_MACOS(10.10);

typedef CK_ENUM(NSInteger, NSHapticFeedbackPattern){NSHapticFeedbackPatternGeneric = 0,
                                                    NSHapticFeedbackPatternAlignment,
                                                    NSHapticFeedbackPatternLevelChange};
typedef CK_ENUM(NSUInteger, NSHapticFeedbackPerformanceTime){
    NSHapticFeedbackPerformanceTimeDefault = 0, NSHapticFeedbackPerformanceTimeNow};
CK_MACOS(10.11)
@protocol NSHapticFeedbackPerformer <NSObject>
- (void)performFeedbackPattern:(NSHapticFeedbackPattern)pattern
               performanceTime:(NSHapticFeedbackPerformanceTime)performanceTime;
@end
CK_MACOS(10.11)
@interface NSHapticFeedbackManager : NSObject
@property(class, readonly, strong) id<NSHapticFeedbackPerformer> defaultPerformer;
@end
#pragma clang assume_nonnull end
