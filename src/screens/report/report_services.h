#pragma once

#include <QString>
#include <functional>

#include "base/clock.h"

class QWidget;

namespace ostrel {

class BreakLog;
class Calendar;
class DailyCounter;
class PresenceTally;
class ReportSummaryView;
class SettingsStore;
class StreakTracker;

// What a person is asked when something is to be saved.
struct SaveQuestion {
    QString title;
    QString suggestedName;  // without a folder
    QString suffix;         // without a dot
};

// Answers with the path of a file, which may be there already, or with nothing. The window that
// asks may be gone when it returns.
using AskForFile = std::function<QString(QWidget& window, const SaveQuestion& question)>;

// What the report works with. All of it outlives the report.
struct ReportServices {
    const ReportSummaryView& summary;
    const BreakLog& breakLog;
    const PresenceTally& presenceTally;
    const StreakTracker& streakTracker;
    const DailyCounter& dailyCounter;
    const SettingsStore& settingsStore;
    const Calendar& calendar;
    NowFunction now;
    AskForFile askForFile;
};

}  // namespace ostrel
