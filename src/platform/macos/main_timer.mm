#import "platform/macos/main_timer.h"

#import <Foundation/Foundation.h>

@interface OstrelAlarm : NSObject {
    ostrel::Signal<>* _rang;
}
- (instancetype)initWithSignal:(ostrel::Signal<>*)rang;
- (void)ring:(NSTimer*)timer;
@end

@implementation OstrelAlarm

- (instancetype)initWithSignal:(ostrel::Signal<>*)rang {
    if ((self = [super init])) {
        _rang = rang;
    }
    return self;
}

- (void)ring:(NSTimer*)timer {
    static_cast<void>(timer);
    _rang->send();
}

@end

namespace ostrel {

struct MainTimer::Impl {
    OstrelAlarm* alarm = nil;
    NSTimer* timer = nil;
};

MainTimer::MainTimer() : impl_(std::make_unique<Impl>()) {
    impl_->alarm = [[OstrelAlarm alloc] initWithSignal:&rang];
}

MainTimer::~MainTimer() {
    [impl_->timer invalidate];
}

void MainTimer::ringIn(std::optional<RunLoopClock::duration> wait) {
    [impl_->timer invalidate];
    impl_->timer = nil;
    if (!wait) {
        return;
    }
    impl_->timer = [NSTimer timerWithTimeInterval:inSeconds(*wait)
                                           target:impl_->alarm
                                         selector:@selector(ring:)
                                         userInfo:nil
                                          repeats:NO];
    [[NSRunLoop mainRunLoop] addTimer:impl_->timer forMode:NSRunLoopCommonModes];
}

}  // namespace ostrel
