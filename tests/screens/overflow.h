#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QWidget>
#include <functional>
#include <string>
#include <string_view>

#include "screens/gui.h"
#include "screens/texts/languages.h"
#include "screens/texts/texts.h"

namespace ostrel {

// What of a shown window has less room than its text takes, one line each; empty when all fits.
inline std::string overflowing(QWidget& window) {
    std::string found;
    const auto tell = [&found](const QWidget& widget, const QString& text, int lacking) {
        found += widget.objectName().toStdString() + " '" + text.toStdString() + "' lacks " +
                 std::to_string(lacking) + " px\n";
    };
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            const int needed = label->wordWrap() ? label->heightForWidth(label->width())
                                                 : label->sizeHint().height();
            const int across = label->wordWrap() ? 0 : label->sizeHint().width() - label->width();
            if (std::max(needed - label->height(), across) > 0) {
                tell(*label, label->text(), std::max(needed - label->height(), across));
            }
        } else if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget)) {
            const int lacking = widget->minimumSizeHint().width() - widget->width();
            if (lacking > 0) {
                tell(*widget, widget->accessibleName(), lacking);
            }
        } else if (auto* area = qobject_cast<QScrollArea*>(widget); area && area->widget()) {
            const int lacking = area->widget()->width() - area->viewport()->width();
            if (lacking > 0) {
                tell(*area, area->accessibleName(), lacking);
            }
        } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
            if (list->horizontalScrollBar()->maximum() > 0 &&
                list->horizontalScrollBarPolicy() != Qt::ScrollBarAsNeeded) {
                tell(*list, list->accessibleName(), list->horizontalScrollBar()->maximum());
            }
        }
    }
    return found;
}

// Looks at everything anew in each language, as after a change of the settings.
inline void inEveryLanguage(const std::function<void(std::string_view language)>& look) {
    const auto adopt = [](std::string_view code, bool isRightToLeft) {
        Texts::setLanguage(code);
        QApplication::setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            QCoreApplication::postEvent(window, new QEvent(QEvent::LanguageChange));
        }
        runFor(std::chrono::milliseconds(20));
    };
    for (const Texts::Language& language : Texts::languages()) {
        adopt(language.code, language.isRightToLeft);
        look(language.code);
    }
    adopt("en", false);
}

// Looks at each of so many pages, which `open` shows, in each language.
inline void expectRoomInEveryLanguage(QWidget& window, int pages,
                                      const std::function<void(int page)>& open) {
    inEveryLanguage([&](std::string_view language) {
        for (int page = 0; page < pages; ++page) {
            open(page);
            runFor(std::chrono::milliseconds(20));
            EXPECT_EQ(overflowing(window), "") << language << ", page " << page;
        }
    });
}

}  // namespace ostrel
