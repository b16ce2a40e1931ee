#include "screens/appearance.h"

#include <QApplication>

#include "core/settings/settings_store.h"
#include "platform/api/appearance_settings.h"

namespace ostrel {
namespace {

bool isDarkPalette(const QPalette& palette) {
    constexpr float kHalf = 0.5F;
    return palette.color(QPalette::Window).lightnessF() < kHalf;
}

// The toolkit derives what is not set from these.
QPalette paletteOf(bool isDark) {
    const QColor window = isDark ? QColor(0x25, 0x29, 0x30) : QColor(0xF4, 0xF5, 0xF7);
    const QColor base = isDark ? QColor(0x1C, 0x20, 0x26) : QColor(0xFF, 0xFF, 0xFF);
    const QColor text = isDark ? QColor(0xF2, 0xF4, 0xF7) : QColor(0x1B, 0x22, 0x2C);
    const QColor quiet = isDark ? QColor(0x8C, 0x95, 0xA3) : QColor(0x7C, 0x85, 0x93);
    const QColor accent = isDark ? QColor(0x3A, 0x7F, 0xAE) : QColor(0x1F, 0x6F, 0xA3);
    QPalette palette(isDark ? QColor(0x33, 0x38, 0x41) : QColor(0xE9, 0xEB, 0xEF), window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, quiet);
    }
    palette.setColor(QPalette::PlaceholderText, quiet);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, isDark ? QColor(0x8F, 0xC7, 0xE8) : accent);
    return palette;
}

}  // namespace

Appearance::Appearance(const SettingsStore& settingsStore, const AppearanceSettings& desktop)
    : settingsStore_(settingsStore),
      desktop_(desktop),
      toolkits_(QApplication::palette()),
      isDark_(isDarkPalette(toolkits_)) {
    subscriptions_.push_back(settingsStore_.settings().onChange([this](const auto&) { adopt(); }));
    subscriptions_.push_back(desktop_.changed.subscribe([this] { adopt(); }));
    adopt();
}

bool Appearance::wantsDark() const {
    switch (settingsStore_.settings()->appearance) {
        case SettingsModel::Appearance::light:
            return false;
        case SettingsModel::Appearance::dark:
            return true;
        case SettingsModel::Appearance::system:
            break;
    }
    return desktop_.prefersDark().value_or(isDarkPalette(toolkits_));
}

// The toolkit's own palette is kept where it is right: it may carry the desktop's colours.
void Appearance::adopt() {
    const bool wanted = wantsDark();
    if (wanted == isDark_) {
        return;
    }
    isDark_ = wanted;
    QApplication::setPalette(wanted == isDarkPalette(toolkits_) ? toolkits_ : paletteOf(wanted));
    changed.send();
}

}  // namespace ostrel
