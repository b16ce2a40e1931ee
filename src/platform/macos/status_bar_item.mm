#include "platform/macos/status_bar_item.h"

#import <AppKit/AppKit.h>

#include "platform/macos/text.h"

namespace ostrel {

struct StatusBarItem::Impl {
    Impl() {
        // The user's place for it survives a restart under this name.
        item.autosaveName = @"ostrel";
        item.button.imagePosition = NSImageLeading;
        // The countdown keeps one width while its digits change.
        const CGFloat points = [NSFont menuBarFontOfSize:0].pointSize;
        item.button.font = [NSFont monospacedDigitSystemFontOfSize:points
                                                            weight:NSFontWeightRegular];
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        item.autosaveName = nil;  // or the place would go with the item
        [[NSStatusBar systemStatusBar] removeStatusItem:item];
    }

    NSStatusItem* item =
        [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
};

StatusBarItem::StatusBarItem() : impl_(std::make_unique<Impl>()) {}
StatusBarItem::~StatusBarItem() = default;

void StatusBarItem::setImage(std::span<const unsigned char> png, double sidePoints) {
    NSData* bytes = [NSData dataWithBytes:png.data() length:png.size()];
    NSImage* image = [[NSImage alloc] initWithData:bytes];
    if (image) {
        image.size = {sidePoints, sidePoints};
        [image setTemplate:YES];
        impl_->item.button.image = image;
    }
}

void StatusBarItem::setTitle(std::string_view title) {
    impl_->item.button.title = toNSString(title);
}

void StatusBarItem::setToolTip(std::string_view toolTip) {
    impl_->item.button.toolTip = toNSString(toolTip);
}

void StatusBarItem::setAccessibilityLabel(std::string_view label) {
    [impl_->item.button setAccessibilityLabel:toNSString(label)];
}

void StatusBarItem::setMenu(void* menu) {
    impl_->item.menu = (__bridge NSMenu*)menu;
}

}  // namespace ostrel
