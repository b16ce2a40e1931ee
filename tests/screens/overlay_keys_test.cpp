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
        Qt::KeyboardModifiers modifiers = {};
    } cases[] = {
        {"p", Qt::Key_P, kPlaceOfP, 35},
        {"p of a layout that has it elsewhere", Qt::Key_P, kElsewhere, 35},
        {"l of Dvorak, where p is printed", Qt::Key_L, kPlaceOfP, {}},
        {"Cyrillic ze", 0x0417, kPlaceOfP, 35},
        {"Cyrillic ze elsewhere", 0x0417, kElsewhere, {}},
        {"ö, a Latin letter", 0x00D6, kPlaceOfP, {}},
        {"no key at all", 0, kPlaceOfP, {}},
        {"enter", Qt::Key_Enter, 104, 76},
        {"P", Qt::Key_P, kPlaceOfP, 35, Qt::ShiftModifier},
        {"p of a chord", Qt::Key_P, kPlaceOfP, {}, Qt::AltModifier},
        {"p of a longer chord", Qt::Key_P, kPlaceOfP, {}, Qt::ControlModifier | Qt::MetaModifier},
    };
    for (const auto& [what, key, scanCode, code, modifiers] : cases) {
        const QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
        EXPECT_EQ(OverlayKeys::virtualKeyCode(event), code) << what;
    }
}

TEST(KeyboardGrab, AsksAgainUntilItIsGivenAndLetsGoOnce) {
    std::string calls;  // T taken, t refused, L let go
    bool isFree = false;
    KeyboardGrab grab([&](bool isGrabbed) {
        calls += isGrabbed ? (isFree ? 'T' : 't') : 'L';
        return isFree || !isGrabbed;
    });
    grab.release();
    grab.take();
    EXPECT_EQ(calls, "t");
    EXPECT_TRUE(runUntil([&calls] { return calls == "tt"; }));
    grab.release();
    runFor(std::chrono::milliseconds(KeyboardGrab::kRetryMs * 2));
    EXPECT_EQ(calls, "ttL") << "releasing ends the asking";

    grab.take();
    isFree = true;
    EXPECT_TRUE(runUntil([&calls] { return calls == "ttLtT"; }));
    grab.take();
    grab.release();
    grab.release();
    EXPECT_EQ(calls, "ttLtTL");
}

}  // namespace ostrel
