#include "platform/macos/application_appearance.h"

#import <AppKit/AppKit.h>
#import <Foundation/NSKeyValueObserving.h>

#include <functional>
#include <utility>

#include "platform/macos/on_main.h"

namespace {

NSString* const kEffectiveAppearance = @"effectiveAppearance";

}  // namespace

@interface OstrelAppearanceListener : NSObject
- (instancetype)initWithChange:(std::function<void()>)change;
@end

@implementation OstrelAppearanceListener {
    std::function<void()> _change;
}

- (instancetype)initWithChange:(std::function<void()>)change {
    if ((self = [super init])) {
        _change = std::move(change);
    }
    return self;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if ([keyPath isEqualToString:kEffectiveAppearance]) {
        _change();
    } else {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
    }
}

@end

namespace ostrel {

struct ApplicationAppearance::Impl {
    explicit Impl(std::function<void()> change)
        : listener([[OstrelAppearanceListener alloc] initWithChange:std::move(change)]) {
        [[NSApplication sharedApplication] addObserver:listener
                                            forKeyPath:kEffectiveAppearance
                                               options:0
                                               context:nil];
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        [[NSApplication sharedApplication] removeObserver:listener forKeyPath:kEffectiveAppearance];
    }

    OstrelAppearanceListener* listener;
};

ApplicationAppearance::ApplicationAppearance()
    : impl_(std::make_unique<Impl>([this] {
          assertOnMain();
          read();
      })) {
    read();
}

ApplicationAppearance::~ApplicationAppearance() = default;

void ApplicationAppearance::read() {
    NSAppearance* appearance = [NSApplication sharedApplication].effectiveAppearance;
    NSAppearanceName nearest = [appearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    std::optional<bool> dark;
    if (nearest) {
        dark = [nearest isEqualToString:NSAppearanceNameDarkAqua] != NO;
    }
    if (std::exchange(prefersDark_, dark) != dark) {
        changed.send();
    }
}

}  // namespace ostrel
