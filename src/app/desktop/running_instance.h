#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariantList>
#include <string>

namespace ostrel {

// The program that runs, as its own command line sees it: over the session bus. Needs a
// QCoreApplication; blocks until it has answered, kPatienceMs at most.
class RunningInstance {
  public:
    static constexpr int kPatienceMs = 5000;

    struct Answer {
        enum class Kind {
            done,
            refused,
            invalid,
            absent,  // nobody of that name is on the bus
            silent,  // somebody is, and does not answer
            noBus,
        };
        [[nodiscard]] bool isDone() const { return kind == Kind::done; }

        Kind kind = Kind::done;
        std::string text;  // what was asked for, or why it was refused
    };

    RunningInstance();
    RunningInstance(const RunningInstance&) = delete;
    RunningInstance& operator=(const RunningInstance&) = delete;
    ~RunningInstance();

    [[nodiscard]] Answer ask(const QString& method, const QVariantList& arguments = {}) const;

    [[nodiscard]] const QDBusConnection& bus() const { return bus_; }

  private:
    QDBusConnection bus_;
};

}  // namespace ostrel
