#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/macos/user_defaults_preferences.h"

namespace ostrel {
namespace {

using namespace std::string_literals;

struct UserDefaultsRun : ::testing::Test {
    void TearDown() override {
        for (NSString* key in [[defaults persistentDomainForName:domain] allKeys]) {
            [defaults removeObjectForKey:key];
        }
    }
    std::vector<std::string> keys() const {
        std::vector<std::string> keys = preferences.keys();
        std::sort(keys.begin(), keys.end());
        return keys;
    }

    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    NSString* domain = [[NSProcessInfo processInfo] processName];
    UserDefaultsPreferences preferences;
};

TEST_F(UserDefaultsRun, BytesComeBackAsTheyWere) {
    for (const std::string& bytes : {""s, "{}"s, "a\0b\xff\n"s, std::string(300'000, 'x')}) {
        preferences.write("ostrel.a.v1", bytes);
        EXPECT_EQ(preferences.read("ostrel.a.v1"), bytes);
        EXPECT_TRUE([[defaults objectForKey:@"ostrel.a.v1"] isKindOfClass:[NSData class]]);
    }
    [defaults registerDefaults:@{@"registered" : [NSData data]}];
    EXPECT_EQ(keys(), std::vector<std::string>{"ostrel.a.v1"});
    preferences.remove("ostrel.a.v1");
    EXPECT_EQ(preferences.read("ostrel.a.v1"), std::nullopt);
    EXPECT_EQ([defaults objectForKey:@"ostrel.a.v1"], nil);
}

TEST_F(UserDefaultsRun, WhatIsNoDataIsNoRecordAndIsSetAsideByTheNextWrite) {
    [defaults setObject:@"by hand" forKey:@"ostrel.a.v1"];
    [defaults setInteger:7 forKey:@"ostrel.b.v1"];
    EXPECT_EQ(preferences.read("ostrel.a.v1"), std::nullopt);
    EXPECT_EQ(preferences.read("ostrel.b.v1"), std::nullopt);
    EXPECT_EQ(keys(), std::vector<std::string>{});
    preferences.write("ostrel.a.v1", "{}");
    EXPECT_EQ(preferences.read("ostrel.a.v1"), "{}");
    EXPECT_TRUE([[defaults stringForKey:@"ostrel.a.v1.damaged"] isEqualToString:@"by hand"]);
}

TEST_F(UserDefaultsRun, SettingAsideKeepsEveryRecordUnderANameOfItsOwn) {
    for (const char* bytes : {"first", "second", "third"}) {
        preferences.write("ostrel.a.v1", bytes);
        preferences.setAside("ostrel.a.v1");
        EXPECT_EQ(preferences.read("ostrel.a.v1"), std::nullopt);
    }
    preferences.setAside("ostrel.a.v1");  // nothing is there
    EXPECT_EQ(preferences.read("ostrel.a.v1.damaged"), "first");
    EXPECT_EQ(preferences.read("ostrel.a.v1.damaged-b"), "second");
    EXPECT_EQ(preferences.read("ostrel.a.v1.damaged-c"), "third");
    EXPECT_EQ([defaults objectForKey:@"ostrel.a.v1.damaged-d"], nil);
    EXPECT_EQ(keys(), std::vector<std::string>{});
}

}  // namespace
}  // namespace ostrel
