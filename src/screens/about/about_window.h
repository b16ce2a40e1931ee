#pragma once

#include <QDateTime>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "screens/controls/styled_window.h"

class QLabel;

namespace ostrel {

class Page;

// What the program is and stands on, where it keeps what is the user's, and that nothing leaves the
// computer.
class AboutWindow : public StyledWindow {
  public:
    // A library. What it calls itself is no text to be translated.
    struct Part {
        QString name;  // with its version where it tells one
        std::string_view purposeKey;
    };
    struct CrashReport {
        QString file;
        QDateTime writtenAt;
    };
    struct Services {
        QString version;
        std::vector<Part> parts;
        QString documentsFolder;
        std::optional<CrashReport> newestReport;
        // Opens a file or a folder in the program for it; answers whether there was one.
        std::function<bool(const QString& path)> open;
    };

    explicit AboutWindow(Services services);

  protected:
    QWidget* makeContent() override;

  private:
    void addTop(Page& page);
    void addPrivacy(Page& page);
    void addCrashReports(Page& page);
    void addParts(Page& page);
    void open(const QString& path, const QPointer<QLabel>& notice);

    Services services_;
};

}  // namespace ostrel
