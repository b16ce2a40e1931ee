#pragma once

#include <QPointer>
#include <filesystem>
#include <memory>

#include "platform/linux/crash_reports.h"

namespace ostrel {

class AboutWindow;
class AppEnvironment;
class MotionSettings;
class SampleBreak;
class SessionBusKeeper;
class WelcomeWindow;

// The windows that are about the program itself: the welcome and about.
class SupportWindows {
  public:
    struct Places {
        std::filesystem::path documents;
        std::filesystem::path crashReports;
    };

    // What is handed over as a reference outlives it.
    SupportWindows(AppEnvironment& environment, const MotionSettings& motion,
                   const SessionBusKeeper& bus, Places places);
    SupportWindows(const SupportWindows&) = delete;
    SupportWindows& operator=(const SupportWindows&) = delete;
    ~SupportWindows();

    // After the launch: welcomes someone who is here for the first time, and tells once of a report
    // that the run before left behind.
    void begin();

    void showWelcome();
    void showAbout();

  private:
    void offerCrashReport();

    AppEnvironment& environment_;
    const SessionBusKeeper& bus_;
    const Places places_;
    const CrashReports reports_;
    std::unique_ptr<SampleBreak> sample_;
    QPointer<WelcomeWindow> welcome_;
    QPointer<AboutWindow> about_;
};

}  // namespace ostrel
