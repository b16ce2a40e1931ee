#pragma once

#include <QString>
#include <QVariantMap>

class QAction;

// An entry's properties in com.canonical.dbusmenu.
namespace ostrel::MenuExportProperties {

// The values of those that an entry does not name, for every name that the protocol has and we use.
[[nodiscard]] const QVariantMap& defaults();

// Those that differ from the defaults.
[[nodiscard]] QVariantMap of(const QAction& action);

// A text with its mnemonic marked as the protocol has it: "_" before the letter, "__" for "_".
[[nodiscard]] QString label(const QString& text);

}  // namespace ostrel::MenuExportProperties
