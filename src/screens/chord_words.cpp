#include "screens/chord_words.h"

#include "screens/texts/texts.h"

namespace ostrel::ChordWords {
namespace {

struct Modifier {
    std::uint32_t mask;
    const char* glyph;
    const char* word;
};
// In the order in which they are written.
constexpr Modifier kModifiers[] = {
    {HotkeyChord::kControl, "⌃", "key.control"},
    {HotkeyChord::kOption, "⌥", "key.alt"},
    {HotkeyChord::kShift, "⇧", "key.shift"},
    {HotkeyChord::kCommand, "⌘", "key.super"},
};

// A Mac has the glyphs on its keys.
QString writtenOut(const Modifier& modifier) {
#ifdef Q_OS_MACOS
    return QString::fromUtf8(modifier.glyph);
#else
    return Texts::of(modifier.word) + u'+';
#endif
}

// Other keys have the same name on most keyboards. The toolkit's catalogues are no help: for Home
// the Polish one speaks of a folder, and the Italian one has an arrow.
QString keyWord(const QString& key) {
    return key == QLatin1String("Space") ? Texts::of("key.space") : key;
}

}  // namespace

QString of(const HotkeyChord& chord) {
    QString words;
    QString key = QString::fromStdString(chord.displayString);
    for (const Modifier& modifier : kModifiers) {
        key.remove(QString::fromUtf8(modifier.glyph));
        if ((chord.modifiers & modifier.mask) != 0) {
            words += writtenOut(modifier);
        }
    }
    return words + keyWord(key);
}

std::string glyphs(std::uint32_t modifiers) {
    std::string all;
    for (const Modifier& modifier : kModifiers) {
        if ((modifiers & modifier.mask) != 0) {
            all += modifier.glyph;
        }
    }
    return all;
}

}  // namespace ostrel::ChordWords
