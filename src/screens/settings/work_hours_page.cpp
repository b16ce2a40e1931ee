#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "screens/settings/bound_controls.h"
#include "screens/settings/pages.h"
#include "screens/texts/texts.h"
#include "screens/texts/time_format.h"

namespace ostrel {
namespace {

constexpr int kSecondsAMinute = 60;
constexpr int kDaysAWeek = 7;

QTime timeOf(std::int64_t minute) {
    constexpr auto kRange = SettingsRanges::kMinuteOfDay;
    const auto shown = static_cast<int>(std::clamp(minute, kRange.least, kRange.most));
    return QTime(0, 0).addSecs(shown * kSecondsAMinute);
}

TimeField* makeTime(SettingsStore& store, std::int64_t SettingsModel::*field, const char* name) {
    auto* control = new TimeField;
    Bound::setName(control, name);
    Bound::ignoreWheel(control);
    control->setWrapping(true);
    // From right to left it would write the minutes before the hour.
    control->setLayoutDirection(Qt::LeftToRight);
    control->setDisplayFormat(Texts::timeFormat());
    Bound::follow(control, store, [control, field](const SettingsModel& settings) {
        const QSignalBlocker quiet(control);
        control->setTime(timeOf(settings.*field));
    });
    QObject::connect(control, &QTimeEdit::timeChanged, control, [&store, field](QTime time) {
        store.update([&](SettingsModel& settings) {
            settings.*field = QTime(0, 0).secsTo(time) / kSecondsAMinute;
        });
    });
    return control;
}

QPushButton* makeDay(SettingsStore& store, Qt::DayOfWeek day) {
    // Sunday is 1 in the settings and 7 in the toolkit.
    const std::int64_t number = day % kDaysAWeek + 1;
    auto* control = new QPushButton(QLocale().standaloneDayName(day, QLocale::ShortFormat));
    Bound::setName(control, ("workDays." + std::to_string(number)).c_str());
    control->setProperty("look", QStringLiteral("day"));
    control->setAccessibleName(QLocale().standaloneDayName(day, QLocale::LongFormat));
    control->setCheckable(true);
    Bound::follow(control, store, [control, number](const SettingsModel& settings) {
        const QSignalBlocker quiet(control);
        control->setChecked(settings.workDays.contains(number));
    });
    QObject::connect(control, &QPushButton::toggled, control, [&store, number](bool isOn) {
        store.update([&](SettingsModel& settings) {
            isOn ? static_cast<void>(settings.workDays.insert(number))
                 : static_cast<void>(settings.workDays.erase(number));
        });
    });
    return control;
}

// In the order of the user's week.
QWidget* makeDays(SettingsStore& store) {
    auto* days = new QWidget;
    auto* across = new QHBoxLayout(days);
    across->setContentsMargins(0, 0, 0, 0);
    across->setSpacing(6);
    const int first = QLocale().firstDayOfWeek();
    for (int i = 0; i < kDaysAWeek; ++i) {
        const int day = (first - 1 + i) % kDaysAWeek + 1;
        across->addWidget(makeDay(store, static_cast<Qt::DayOfWeek>(day)));
    }
    return days;
}

std::string_view hintFor(const SettingsModel& settings) {
    if (settings.workDays.empty()) {
        return "settings.work_hours.no_days_hint";
    }
    if (settings.workHoursStartMinute > settings.workHoursEndMinute) {
        return "settings.work_hours.overnight_hint";
    }
    return settings.workHoursStartMinute == settings.workHoursEndMinute
               ? "settings.work_hours.whole_day_hint"
               : std::string_view();
}

}  // namespace

Page* makeWorkHoursPage(const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    using S = SettingsModel;
    auto* page = new Page(Texts::of("settings.page.work_hours"));
    Card* use = page->addCard({});
    use->addRow(Texts::of("settings.work_hours.enabled"), {},
                Bound::makeSwitch(store, &S::workHoursEnabled, "workHoursEnabled"));
    Card* hours = page->addCard(Texts::of("settings.work_hours.hours"));
    hours->addRow(Texts::of("settings.work_hours.start"), {},
                  makeTime(store, &S::workHoursStartMinute, "workHoursStartMinute"));
    hours->addRow(Texts::of("settings.work_hours.end"), {},
                  makeTime(store, &S::workHoursEndMinute, "workHoursEndMinute"));
    Card* days = page->addCard(Texts::of("settings.work_hours.days"));
    days->addWide(makeDays(store));
    QLabel* hint = makeLabel({}, "warning");
    hint->setObjectName(QStringLiteral("ostrel.settings.work_hours.hint"));
    page->addWidget(hint);
    Bound::follow(page, store, [hours, days, hint](const SettingsModel& settings) {
        hours->setEnabled(settings.workHoursEnabled);
        days->setEnabled(settings.workHoursEnabled);
        const std::string_view key = hintFor(settings);
        hint->setVisible(settings.workHoursEnabled && !key.empty());
        hint->setText(key.empty() ? QString() : Texts::of(key));
    });
    return page;
}

}  // namespace ostrel
