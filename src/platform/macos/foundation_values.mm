#import "platform/macos/foundation_values.h"

#include <string_view>

#include "platform/macos/text.h"

namespace ostrel {
namespace {

// Truth values have a class of their own, which alone tells them from a char.
bool isTruth(NSNumber* number) {
    return [number isKindOfClass:[[NSNumber numberWithBool:YES] class]] != NO;
}

bool isReal(NSNumber* number) {
    const std::string_view type = number.objCType;
    return type == @encode(double) || type == @encode(float);
}

}  // namespace

PlainValue toPlainValue(id value) {
    if ([value isKindOfClass:[NSString class]]) {
        return toUtf8(value);
    }
    if (![value isKindOfClass:[NSNumber class]]) {
        return {};
    }
    NSNumber* number = value;
    if (isTruth(number)) {
        return number.boolValue != NO;
    }
    return isReal(number) ? PlainValue(number.doubleValue)
                          : PlainValue(static_cast<std::int64_t>(number.longLongValue));
}

PlainDictionary toPlainDictionary(id dictionary) {
    PlainDictionary plain;
    if ([dictionary isKindOfClass:[NSDictionary class]]) {
        NSDictionary* entries = dictionary;
        for (id key in entries) {
            if ([key isKindOfClass:[NSString class]]) {
                plain[toUtf8(key)] = toPlainValue([entries objectForKey:key]);
            }
        }
    }
    return plain;
}

}  // namespace ostrel
