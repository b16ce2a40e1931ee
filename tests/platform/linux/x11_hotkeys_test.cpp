#include "platform/linux/x11_hotkeys.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <set>

#include "platform/linux/virtual_keys.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kCommand = 256;
constexpr std::uint32_t kShift = 512;
constexpr std::uint8_t kKeycodeOfB = 56;

struct X11HotkeysTest : ::testing::Test {
    void SetUp() override {
        if (QGuiApplication::platformName() != "xcb") {
            GTEST_SKIP() << "needs an X server in DISPLAY";
        }
    }
    // A key event as the X server sends it.
    bool feed(std::uint8_t type, std::uint32_t timeMs) {
        xcb_key_press_event_t event{};
        event.response_type = type;
        event.detail = kKeycodeOfB;
        event.time = timeMs;
        event.state = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT;
        return hotkeys.nativeEventFilter("xcb_generic_event_t", &event, nullptr);
    }
    bool press(std::uint32_t timeMs) { return feed(XCB_KEY_PRESS, timeMs); }
    void release(std::uint32_t timeMs) { feed(XCB_KEY_RELEASE, timeMs); }

    X11Hotkeys hotkeys;
    int presses = 0;
};

TEST_F(X11HotkeysTest, AKeyThatRepeatsItselfWasPressedOnce) {
    const auto bound = hotkeys.add(11, kCommand + kShift, [this] { ++presses; });
    ASSERT_TRUE(bound);
    EXPECT_TRUE(press(1000));
    for (std::uint32_t at = 1500; at < 3000; at += 30) {
        release(at);
        press(at);  // at the same instant
    }
    EXPECT_EQ(presses, 1);
    release(3000);
    press(3050);
    EXPECT_EQ(presses, 2) << "let go for an instant";
    for (std::uint32_t at = 3500; at < 5000; at += 30) {
        press(at);  // where releases are not told
    }
    EXPECT_EQ(presses, 2);
    press(9000);
    EXPECT_EQ(presses, 3) << "its release went to somebody else";
}

TEST(VirtualKeysTest, EveryCodeHasAKeyOfItsOwn) {
    std::set<std::uint8_t> keys;
    for (std::uint32_t code = 0; code < 300; ++code) {
        const auto key = x11KeycodeOf(code);
        EXPECT_TRUE(!key || keys.insert(*key).second) << code;
    }
    EXPECT_EQ(x11KeycodeOf(54), std::nullopt) << "a modifier";
    EXPECT_EQ(x11KeycodeOf(122), 67) << "F1";
    EXPECT_EQ(x11KeycodeOf(111), 96) << "F12";
}

}  // namespace
}  // namespace ostrel
