#pragma once

#include <QStringList>
#include <QWidget>
#include <string>
#include <vector>

#include "screens/settings/settings_services.h"

class QLineEdit;
class QListWidget;
class QMenu;

namespace ostrel {

// The programs during whose use a break waits: picked from those that run, or typed.
class ProgramList : public QWidget {
  public:
    // The services outlive it.
    explicit ProgramList(const SettingsServices& services);

  private:
    [[nodiscard]] QStringList namesOf(const std::vector<std::string>& programs) const;
    void show(const std::vector<std::string>& programs);
    void offerRunning(QMenu& menu);
    void add(const std::string& program);
    void removeChosen();

    const SettingsServices& services_;
    QListWidget* list_;
    QLineEdit* typed_;
    std::vector<std::string> shown_;
};

}  // namespace ostrel
