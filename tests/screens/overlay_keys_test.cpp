#include "screens/overlay_keys.h"

#include "screens/gui.h"
#include "screens/keyboard_grab.h"

namespace ostrel {

TEST(OverlayKeys, PIsTheLetterOrItsPlaceWhereNoLatinLettersAre) {
    constexpr quint32 kPlaceOfP = 33;
    constexpr quint32 kElsewhere = 24;
    const struct {
        const char* what = "";
        int key = 0;
        quint32 scanCode = 0;
        std::optional<std::uint32_t> code;
    } cases[] = {
        {"p", Qt::Key_P, kPlaceOfP, 35},
        {"p of a layout that has it elsewhere", Qt::Key_P, kElsewhere, 35},
        {"l of Dvorak, where p is printed", Qt::Key_L, kPlaceOfP, {}},
        {"Cyrillic ze", 0x0417, kPlaceOfP, 35},
        {"Cyrillic ze elsewhere", 0x0417, kElsewhere, {}},
        {"Hebrew pe", 0x05E4, kPlaceOfP, 35},
        {"ö, a Latin letter", 0x00D6, kPlaceOfP, {}},
        {"a semicolon", Qt::Key_Semicolon, kPlaceOfP, {}},
        {"a function key", Qt::Key_F5, kPlaceOfP, {}},
        {"no key at all", 0, kPlaceOfP, {}},
        {"escape", Qt::Key_Escape, 9, 53},
        {"return", Qt::Key_Return, 36, 36},
        {"enter", Qt::Key_Enter, 104, 76},
        {"space", Qt::Key_Space, 65, 49},
        {"tab", Qt::Key_Tab, 23, {}},
    };
    for (const auto& [what, key, scanCode, code] : cases) {
        const QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0);
        EXPECT_EQ(OverlayKeys::virtualKeyCode(event), code) << what;
    }
}

TEST(OverlayKeys, AKeyOfAChordIsNoAnswer) {
    const std::pair<Qt::KeyboardModifiers, bool> cases[] = {
        {Qt::ControlModifier | Qt::MetaModifier, false},
        {Qt::AltModifier, false},
        {Qt::ShiftModifier, true},
        {Qt::KeypadModifier, true},
    };
    for (const auto& [modifiers, isAnswer] : cases) {
        const QKeyEvent event(QEvent::KeyPress, Qt::Key_P, modifiers);
        EXPECT_EQ(OverlayKeys::virtualKeyCode(event).has_value(), isAnswer)
            << static_cast<int>(modifiers);
    }
}

struct KeyboardGrabTest : ::testing::Test {
    std::string calls;  // T taken, t refused, L let go
    bool isFree = true;
    KeyboardGrab::SetGrabbed setGrabbed = [this](bool isGrabbed) {
        calls += isGrabbed ? (isFree ? 'T' : 't') : 'L';
        return isFree || !isGrabbed;
    };
};

TEST_F(KeyboardGrabTest, AsksAgainUntilItIsGivenAndNoMoreThen) {
    KeyboardGrab grab(setGrabbed);
    isFree = false;
    grab.take();
    EXPECT_EQ(calls, "t");
    EXPECT_TRUE(runUntil([this] { return calls == "tt"; }));
    isFree = true;
    EXPECT_TRUE(runUntil([this] { return calls == "ttT"; }));
    grab.take();
    EXPECT_EQ(calls, "ttT");
}

TEST_F(KeyboardGrabTest, LetsGoOnceAndOnlyOfWhatItHas) {
    {
        KeyboardGrab grab(setGrabbed);
        grab.release();
        EXPECT_EQ(calls, "");
        grab.take();
        grab.release();
        grab.release();
        EXPECT_EQ(calls, "TL");
        grab.take();
    }
    EXPECT_EQ(calls, "TLTL");
}

TEST_F(KeyboardGrabTest, ReleasingEndsTheAsking) {
    KeyboardGrab grab(setGrabbed);
    isFree = false;
    grab.take();
    grab.release();
    bool isLater = false;
    QTimer::singleShot(KeyboardGrab::kRetryMs * 2, [&isLater] { isLater = true; });
    EXPECT_TRUE(runUntil([&isLater] { return isLater; }));
    EXPECT_EQ(calls, "t");
}

}  // namespace ostrel
