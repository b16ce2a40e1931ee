#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/process_table.h"

namespace ostrel {

// The processes that keep the session from becoming idle by org.gnome.SessionManager, which GNOME
// and its relatives have. It knows programs, not processes: all processes of the program count.
//
// Nothing here waits for an answer; one that appears later is asked then.
class SessionManagerInhibitors : public QObject {
    Q_OBJECT

  public:
    SessionManagerInhibitors(QDBusConnection sessionBus, ProcessTable processes);

    [[nodiscard]] std::set<std::int64_t> processes() const;

  private:
    Q_SLOT void add(const QDBusObjectPath& path);
    Q_SLOT void remove(const QDBusObjectPath& path);
    void askForAll();
    void askForReason(const QString& path);
    void askForProgram(const QString& path);
    [[nodiscard]] std::vector<std::int64_t> processesOf(const std::string& program) const;

    QDBusConnection bus_;
    ProcessTable processes_;
    // By the inhibitor's path; null processes while it is being asked, and of those that concern
    // something else.
    std::map<QString, std::vector<std::int64_t>> inhibitors_;
};

}  // namespace ostrel
