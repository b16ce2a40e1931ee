#pragma once

#include <QPushButton>

#include "core/settings/settings_model.h"
#include "presence/hotkey_router.h"
#include "screens/settings/settings_services.h"

class QLabel;

namespace ostrel {

// A button with the keys of one of the two shortcuts. Pressed, it waits for new ones, and takes
// them if they are valid, nobody else's and not those of the other shortcut.
class ChordRecorder : public QPushButton {
  public:
    // The services outlive it and have a hotkey router.
    ChordRecorder(const SettingsServices& services, HotkeyRouter::Action action);
    ~ChordRecorder() override;

    // What speaks against the keys, hidden when nothing does. Belongs to whoever places it.
    [[nodiscard]] QLabel* remark() const { return remark_; }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void setRecording(bool isRecording);
    void take(const HotkeyChord& chord);
    void show(const SettingsModel& settings);
    void say(const QString& keys);
    void tell(const QString& problem);
    [[nodiscard]] HotkeyChord SettingsModel::*field() const;
    [[nodiscard]] HotkeyChord SettingsModel::*otherField() const;

    const SettingsServices& services_;
    const HotkeyRouter::Action action_;
    QLabel* remark_;
    bool isRecording_ = false;
};

}  // namespace ostrel
