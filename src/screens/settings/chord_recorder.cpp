#include "screens/settings/chord_recorder.h"

#include <QKeyEvent>
#include <QLabel>

#include "screens/chord_words.h"
#include "screens/controls/page.h"
#include "screens/settings/bound_controls.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

struct Modifier {
    Qt::KeyboardModifier pressed;
    std::uint32_t mask;
};
// On a Mac the toolkit has Control for the key with ⌘ on it, and Meta for the one with ⌃.
#ifdef Q_OS_MACOS
constexpr Qt::KeyboardModifier kControlKey = Qt::MetaModifier;
constexpr Qt::KeyboardModifier kCommandKey = Qt::ControlModifier;
#else
constexpr Qt::KeyboardModifier kControlKey = Qt::ControlModifier;
constexpr Qt::KeyboardModifier kCommandKey = Qt::MetaModifier;
#endif
constexpr Modifier kModifiers[] = {
    {kControlKey, HotkeyChord::kControl},
    {Qt::AltModifier, HotkeyChord::kOption},
    {Qt::ShiftModifier, HotkeyChord::kShift},
    {kCommandKey, HotkeyChord::kCommand},
};

bool isModifier(int key) {
    switch (key) {
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Shift:
        case Qt::Key_Meta:
        case Qt::Key_Super_L:
        case Qt::Key_Super_R:
        case Qt::Key_CapsLock:
        case Qt::Key_NumLock:
            return true;
        default:
            return false;
    }
}

}  // namespace

ChordRecorder::ChordRecorder(const SettingsServices& services, HotkeyRouter::Action action)
    : services_(services), action_(action), remark_(makeLabel({}, "warning")) {
    const bool isStart = action == HotkeyRouter::Action::startBreak;
    Bound::setName(this, isStart ? "startBreakHotkey" : "togglePauseHotkey");
    setMinimumWidth(170);
    remark_->setVisible(false);
    connect(this, &QPushButton::clicked, this, [this] { setRecording(!isRecording_); });
    Bound::follow(this, services.settingsStore,
                  [this](const SettingsModel& settings) { show(settings); });
}

ChordRecorder::~ChordRecorder() {
    setRecording(false);
}

HotkeyChord SettingsModel::*ChordRecorder::field() const {
    return action_ == HotkeyRouter::Action::startBreak ? &SettingsModel::startBreakHotkey
                                                       : &SettingsModel::togglePauseHotkey;
}

HotkeyChord SettingsModel::*ChordRecorder::otherField() const {
    return action_ == HotkeyRouter::Action::startBreak ? &SettingsModel::togglePauseHotkey
                                                       : &SettingsModel::startBreakHotkey;
}

void ChordRecorder::show(const SettingsModel& settings) {
    if (isRecording_) {
        return;
    }
    say(ChordWords::of(settings.*field()));
    if (HotkeyRouter::areSame(settings.*field(), settings.*otherField())) {
        tell(Texts::of("settings.shortcuts.equal"));
    } else {
        tell(services_.hotkeyRouter->isRegistered(action_) ? QString()
                                                           : Texts::of("settings.shortcuts.taken"));
    }
}

// A screen reader has the row's words for a name.
void ChordRecorder::say(const QString& keys) {
    setText(keys);
    setAccessibleDescription(keys);
}

void ChordRecorder::tell(const QString& problem) {
    remark_->setText(problem);
    remark_->setVisible(!problem.isEmpty());
    remark_->parentWidget() ? remark_->parentWidget()->setVisible(!problem.isEmpty()) : void();
}

// Meanwhile the shortcuts are off: their keys are to reach this window.
void ChordRecorder::setRecording(bool isRecording) {
    if (isRecording == isRecording_) {
        return;
    }
    isRecording_ = isRecording;
    services_.hotkeyRouter->setActive(!isRecording);
    if (isRecording) {
        setFocus();  // a screen reader presses it without
        say(Texts::of("settings.shortcuts.press_keys"));
        tell({});
    } else {
        show(*services_.settingsStore.settings());
    }
}

// Else a key that is a shortcut of this window, or Tab, would not come as a key.
bool ChordRecorder::event(QEvent* event) {
    if (isRecording_ && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (isRecording_ && event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QPushButton::event(event);
}

void ChordRecorder::keyPressEvent(QKeyEvent* event) {
    if (!isRecording_) {
        QPushButton::keyPressEvent(event);
        return;
    }
    if (isModifier(event->key())) {
        return;
    }
    HotkeyChord chord;
    for (const Modifier& modifier : kModifiers) {
        if (event->modifiers().testFlag(modifier.pressed)) {
            chord.modifiers |= modifier.mask;
        }
    }
    if (event->key() == Qt::Key_Escape && chord.modifiers == 0) {
        setRecording(false);
        return;
    }
    constexpr std::uint32_t kNoSuchKey = 128;
    chord.keyCode = services_.virtualKeyCode(*event).value_or(kNoSuchKey);
    chord.displayString =
        ChordWords::glyphs(chord.modifiers) +
        QKeySequence(event->key()).toString(QKeySequence::PortableText).toStdString();
    take(chord);
}

void ChordRecorder::take(const HotkeyChord& chord) {
    const HotkeyChord& other = (*services_.settingsStore.settings()).*otherField();
    if (const auto problem = HotkeyRouter::problemOf(chord, other)) {
        tell(Texts::of(*problem));
    } else {
        services_.settingsStore.update(
            [this, &chord](SettingsModel& settings) { settings.*field() = chord; });
        setRecording(false);
    }
}

void ChordRecorder::focusOutEvent(QFocusEvent* event) {
    setRecording(false);
    QPushButton::focusOutEvent(event);
}

}  // namespace ostrel
