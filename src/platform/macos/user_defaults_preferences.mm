#import "platform/macos/user_defaults_preferences.h"

#import <Foundation/Foundation.h>

#include <cstdio>

#include "platform/api/aside_names.h"
#include "platform/macos/text.h"

namespace ostrel {
namespace {

NSUserDefaults* defaults() {
    return [NSUserDefaults standardUserDefaults];
}

id valueOf(std::string_view key) {
    return [defaults() objectForKey:toNSString(key)];
}

bool isRecord(id value) {
    return [value isKindOfClass:[NSData class]];
}

// The system's name for the program's own preferences: that of a program without a bundle is its
// process's.
NSString* domain() {
    NSString* const identifier = [[NSBundle mainBundle] bundleIdentifier];
    return identifier ? identifier : [[NSProcessInfo processInfo] processName];
}

}  // namespace

std::optional<std::string> UserDefaultsPreferences::read(std::string_view key) const {
    const id value = valueOf(key);
    if (!isRecord(value)) {
        return std::nullopt;
    }
    NSData* const data = value;
    // An empty record may have no address.
    return data.length == 0 ? std::string()
                            : std::string(static_cast<const char*>([data bytes]), [data length]);
}

void UserDefaultsPreferences::write(std::string_view key, std::string_view bytes) {
    if (const id before = valueOf(key); before && !isRecord(before)) {
        setAside(key);
    }
    [defaults() setObject:[NSData dataWithBytes:bytes.data() length:bytes.size()]
                   forKey:toNSString(key)];
}

void UserDefaultsPreferences::remove(std::string_view key) {
    [defaults() removeObjectForKey:toNSString(key)];
}

std::vector<std::string> UserDefaultsPreferences::keys() const {
    std::vector<std::string> keys;
    NSDictionary<NSString*, id>* const all = [defaults() persistentDomainForName:domain()];
    for (NSString* name in all) {
        std::string key = toUtf8(name);
        if (isRecord([all objectForKey:name]) && !isAsideName(key)) {
            keys.push_back(std::move(key));
        }
    }
    return keys;
}

void UserDefaultsPreferences::setAside(std::string_view key) {
    const id value = valueOf(key);
    if (!value) {
        return;
    }
    const std::string aside =
        freeAsideName(key, [](const std::string& name) { return valueOf(name) != nil; });
    [defaults() setObject:value forKey:toNSString(aside)];
    remove(key);
    std::fprintf(stderr, "ostrel: %s could not be used and was set aside as %s\n",
                 std::string(key).c_str(), aside.c_str());
}

}  // namespace ostrel
