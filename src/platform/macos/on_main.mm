#import <Foundation/Foundation.h>

#include <utility>

#include "base/fatal.h"
#include "platform/macos/on_main.h"

@interface OstrelMainWork : NSObject {
    std::function<void()> _work;
}
- (instancetype)initWithWork:(std::function<void()>)work;
- (void)run;
@end

@implementation OstrelMainWork

- (instancetype)initWithWork:(std::function<void()>)work {
    if ((self = [super init])) {
        _work = std::move(work);
    }
    return self;
}

- (void)run {
    _work();
}

@end

namespace ostrel {

void onMain(std::function<void()> work) {
    [[[OstrelMainWork alloc] initWithWork:std::move(work)]
        performSelectorOnMainThread:@selector(run)
                         withObject:nil
                      waitUntilDone:NO];
}

void assertOnMain() {
#ifndef NDEBUG
    if (![NSThread isMainThread]) {
        fatal("called away from the main thread");
    }
#endif
}

}  // namespace ostrel
