#include "app/shell/support_windows.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "app/environment/app_environment.h"
#include "app/shell/desktop_system.h"
#include "screens/about/about_window.h"
#include "screens/welcome/sample_break.h"
#include "screens/welcome/welcome_window.h"

namespace ostrel {
namespace {

constexpr double kOfferSec = 30;

QString asText(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

bool openFile(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

std::vector<AboutWindow::Part> partsOn(const DesktopSystem& desktop) {
    const QString json = QStringLiteral("nlohmann-json %1.%2.%3")
                             .arg(NLOHMANN_JSON_VERSION_MAJOR)
                             .arg(NLOHMANN_JSON_VERSION_MINOR)
                             .arg(NLOHMANN_JSON_VERSION_PATCH);
    std::vector<AboutWindow::Part> parts = {
        {QStringLiteral("Qt ") + QString::fromLatin1(qVersion()), "about.parts.qt"},
        {json, "about.parts.json"},
        {QStringLiteral("Howard Hinnant date"), "about.parts.date"}};
    for (AboutWindow::Part& part : desktop.parts()) {
        parts.push_back(std::move(part));
    }
    return parts;
}

}  // namespace

SupportWindows::SupportWindows(AppEnvironment& environment, DesktopSystem& desktop,
                               std::string dataFolder)
    : environment_(environment),
      desktop_(desktop),
      dataFolder_(std::move(dataFolder)),
      sample_(std::make_unique<SampleBreak>(environment.settingsStore(), desktop.motion())) {}

SupportWindows::~SupportWindows() {
    delete welcome_;
    delete about_;
}

void SupportWindows::begin() {
    QTimer::singleShot(0, sample_.get(), [this] {
        if (!environment_.settingsStore().settings()->hasOnboarded) {
            showWelcome();
        }
        offerCrashReport();
    });
}

void SupportWindows::showWelcome() {
    if (!welcome_) {
        SettingsStore& store = environment_.settingsStore();
        welcome_ = new WelcomeWindow(
            {store, environment_.timerEngine(), [this] { sample_->show(); },
             [this](auto tell) {
                 desktop_.questions().findCapabilities(sample_.get(), std::move(tell));
             },
             [&store](bool isEnabled) {
                 store.update([=](SettingsModel& settings) { settings.launchAtLogin = isEnabled; });
                 return store.settings()->launchAtLogin == isEnabled;
             }});
    }
    welcome_->present();
}

void SupportWindows::showAbout() {
    if (!about_) {
        std::optional<AboutWindow::CrashReport> newest;
        if (const auto file = desktop_.newestCrashReport()) {
            newest = {asText(*file), QFileInfo(asText(*file)).lastModified()};
        }
        about_ =
            new AboutWindow({QStringLiteral(OSTREL_VERSION), partsOn(desktop_),
                             QString::fromStdString(dataFolder_), std::move(newest), openFile});
    }
    about_->present();
}

void SupportWindows::offerCrashReport() {
    const auto report = desktop_.takeUnseenCrashReport();
    if (!report) {
        return;
    }
    std::fprintf(stderr, "ostrel: crashed last time; see %s\n", report->c_str());
    Toast toast;
    toast.message = {"crash.offer", {}};
    toast.secondaryLine = LocalizedText{"crash.offer.where", {}};
    toast.kind = Toast::Kind::warning;
    toast.actions = {{"open_report",
                      {"crash.offer.open", {}},
                      Toast::ActionRole::primary,
                      [file = asText(*report), this] {
                          if (!openFile(file)) {
                              showAbout();
                          }
                      }},
                     {"close", {"crash.offer.close", {}}, Toast::ActionRole::secondary, [] {}}};
    environment_.toastDispatcher().show({std::move(toast), kOfferSec});
}

}  // namespace ostrel
