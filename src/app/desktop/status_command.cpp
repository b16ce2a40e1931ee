#include "app/desktop/status_command.h"

#include <QCoreApplication>
#include <string>
#include <vector>

#include "app/desktop/command_output.h"
#include "platform/linux/linux_capabilities.h"
#include "screens/capability_words.h"

namespace ostrel {
namespace {

std::string lines(const std::vector<Capability>& capabilities) {
    std::string all;
    for (const Capability& capability : capabilities) {
        QString line = CapabilityWords::topic(capability) + QStringLiteral(": ") +
                       CapabilityWords::state(capability);
        if (const QString reason = CapabilityWords::reason(capability); !reason.isEmpty()) {
            line += QStringLiteral(". ") + reason;
        }
        all += line.toStdString() + '\n';
    }
    return all;
}

}  // namespace

// Without a window of its own, and therefore also where there is no display.
int runStatusCommand(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    findCapabilities(
        QDBusConnection::sessionBus(), QDBusConnection::systemBus(), QCoreApplication::instance(),
        [](const std::vector<Capability>& found) { QCoreApplication::exit(print(lines(found))); });
    return QCoreApplication::exec();
}

}  // namespace ostrel
