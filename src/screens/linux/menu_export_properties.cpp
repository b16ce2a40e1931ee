#include "screens/linux/menu_export_properties.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace ostrel::MenuExportProperties {

const QVariantMap& defaults() {
    static const QVariantMap kDefaults{
        {QStringLiteral("type"), QStringLiteral("standard")},
        {QStringLiteral("label"), QString()},
        {QStringLiteral("enabled"), true},
        {QStringLiteral("visible"), true},
        {QStringLiteral("toggle-type"), QString()},
        {QStringLiteral("toggle-state"), -1},
        {QStringLiteral("children-display"), QString()},
    };
    return kDefaults;
}

QVariantMap of(const QAction& action) {
    QVariantMap properties;
    if (!action.isVisible()) {
        properties[QStringLiteral("visible")] = false;
    }
    if (action.isSeparator()) {
        properties[QStringLiteral("type")] = QStringLiteral("separator");
        return properties;
    }
    properties[QStringLiteral("label")] = label(action.text());
    if (!action.isEnabled()) {
        properties[QStringLiteral("enabled")] = false;
    }
    if (action.isCheckable()) {
        const bool isOneOfSeveral = action.actionGroup() && action.actionGroup()->isExclusive();
        properties[QStringLiteral("toggle-type")] =
            isOneOfSeveral ? QStringLiteral("radio") : QStringLiteral("checkmark");
        properties[QStringLiteral("toggle-state")] = action.isChecked() ? 1 : 0;
    }
    if (action.menu()) {
        properties[QStringLiteral("children-display")] = QStringLiteral("submenu");
    }
    return properties;
}

QString label(const QString& text) {
    QString marked;
    for (qsizetype i = 0; i < text.size() && text[i] != QLatin1Char('\t'); ++i) {
        if (text[i] == QLatin1Char('_')) {
            marked += QStringLiteral("__");
        } else if (text[i] != QLatin1Char('&')) {
            marked += text[i];
        } else if (++i < text.size()) {
            marked += text[i] == QLatin1Char('&') ? QString(text[i]) : u'_' + QString(text[i]);
        }
    }
    return marked;
}

}  // namespace ostrel::MenuExportProperties
