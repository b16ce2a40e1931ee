#pragma once

#include <QPointer>
#include <memory>
#include <string>

namespace ostrel {

class AboutWindow;
class AppEnvironment;
class DesktopSystem;
class SampleBreak;
class WelcomeWindow;

// The windows that are about the program itself: the welcome and about.
class SupportWindows {
  public:
    // What is handed over as a reference outlives it.
    SupportWindows(AppEnvironment& environment, DesktopSystem& desktop, std::string dataFolder);
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
    DesktopSystem& desktop_;
    const std::string dataFolder_;
    std::unique_ptr<SampleBreak> sample_;
    QPointer<WelcomeWindow> welcome_;
    QPointer<AboutWindow> about_;
};

}  // namespace ostrel
