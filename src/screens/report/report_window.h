#pragma once

#include <QMenu>
#include <QTimer>
#include <memory>
#include <vector>

#include "base/subscription.h"
#include "screens/controls/styled_window.h"
#include "screens/report/report_data.h"
#include "screens/report/report_services.h"

class QLabel;
class QPushButton;

namespace ostrel {

class EmptyNote;
class ReportSheet;

// The window that tells how the breaks of the last days went, and saves that to a file. It follows
// the records as long as it is open.
class ReportWindow : public StyledWindow {
  public:
    using Services = ReportServices;

    explicit ReportWindow(Services services);

  protected:
    [[nodiscard]] QWidget* makeContent() override;
    bool event(QEvent* event) override;

  private:
    enum class Format { csv, json, png };
    enum class Tone { calm, warning };

    [[nodiscard]] QWidget* makeToolbar();
    [[nodiscard]] QPushButton* makeExportButton();
    void refresh();
    void showContent(const ReportData& report);
    void exportAs(Format format);
    [[nodiscard]] QByteArray bytesOf(Format format);
    [[nodiscard]] QString suggestedName(const QString& suffix) const;
    void say(const QString& text, Tone tone);

    Services services_;
    ReportSummaryView::Range range_ = ReportSummaryView::Range::weekly;
    std::unique_ptr<QMenu> exportMenu_;
    // In the content, which is made anew with each language.
    QWidget* toolbar_ = nullptr;
    QPushButton* exportButton_ = nullptr;
    QLabel* calmMessage_ = nullptr;
    QLabel* warning_ = nullptr;
    EmptyNote* note_ = nullptr;
    ReportSheet* sheet_ = nullptr;
    QTimer refreshSoon_;  // the end of a break changes several records
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
