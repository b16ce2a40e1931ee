#include "screens/identifier.h"

#include <QString>
#include <QWidget>

namespace ostrel {

void identify(QWidget* widget, const QString& name) {
    widget->setObjectName(name);
#if QT_VERSION >= QT_VERSION_CHECK(6, 9, 0)
    widget->setAccessibleIdentifier(name);
#endif
}

}  // namespace ostrel
