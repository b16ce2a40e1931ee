#include "screens/report/accessible_chart.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>
#include <utility>

namespace ostrel {
namespace {

constexpr std::pair<const char*, QAccessible::Role> kRoles[] = {
    {"ostrel::DayChart", QAccessible::List},
    {"ostrel::DayBar", QAccessible::ListItem},
    {"ostrel::RangeChoice", QAccessible::Grouping},
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    for (const auto& [name, role] : kRoles) {
        if (className == QLatin1String(name)) {
            return new QAccessibleWidget(static_cast<QWidget*>(object), role);
        }
    }
    return nullptr;
}

}  // namespace

void installAccessibleChart() {
    static const bool kIsInstalled = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(kIsInstalled);
}

}  // namespace ostrel
