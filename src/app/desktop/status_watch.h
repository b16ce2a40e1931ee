#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <functional>
#include <string>

#include "app/desktop/running_instance.h"

namespace ostrel {

// Prints a line whenever it is another one, until the running program or the reader is gone.
class StatusWatch : public QObject {
    Q_OBJECT

  public:
    // The line of a status that came as JSON.
    using LineOf = std::function<std::string(const std::string& status)>;

    StatusWatch(const RunningInstance& instance, LineOf lineOf);

    // Returns when the watch is over: the exit status, or why it could not begin.
    struct End {
        RunningInstance::Answer begun;
        int status = 0;
    };
    [[nodiscard]] End run();

  private:
    Q_SLOT void tell(const QString& status);
    Q_SLOT void loseBus();
    void follow(const QString& newOwner);

    const RunningInstance& instance_;
    LineOf lineOf_;
    std::string told_;
    QSocketNotifier reader_;
};

}  // namespace ostrel
