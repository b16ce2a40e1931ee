#include "platform/macos/power_manager_assertions.h"

#import <Foundation/Foundation.h>
#import <IOKit/pwr_mgt/IOPMLib.h>

#include "platform/macos/assertion_lists.h"
#include "platform/macos/foundation_values.h"
#include "platform/macos/text.h"

namespace ostrel {

std::optional<PowerAssertions::ByProcess> PowerManagerAssertions::byProcess() const {
    CFDictionaryRef table = nullptr;
    if (IOPMCopyAssertionsByProcess(&table) != kIOReturnSuccess || !table) {
        return std::nullopt;
    }
    NSDictionary* byPid = CFBridgingRelease(table);
    std::vector<AssertionList> lists;
    for (id pid in byPid) {
        AssertionList& list = lists.emplace_back();
        list.processIdentifier = toPlainValue(pid);
        id held = [byPid objectForKey:pid];
        if ([held isKindOfClass:[NSArray class]]) {
            for (id assertion in held) {
                list.assertions.push_back(toPlainDictionary(assertion));
            }
        }
    }
    return assertionTypes(lists, toUtf8((__bridge NSString*)kIOPMAssertionTypeKey));
}

}  // namespace ostrel
