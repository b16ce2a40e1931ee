#include "app/desktop/status_command.h"

#include <QCoreApplication>
#include <string_view>

#include "app/desktop/command_output.h"
#include "base/enum_names.h"
#include "platform/linux/linux_capabilities.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

QString textOf(std::string_view prefix, std::string_view name) {
    return Texts::of(std::string(prefix) + std::string(name));
}

std::string lines(const std::vector<Capability>& capabilities) {
    std::string all;
    for (const Capability& capability : capabilities) {
        QString line = textOf("capability.topic.", nameOf(capability.topic)) +
                       QStringLiteral(": ") + textOf("capability.state.", nameOf(capability.state));
        if (!capability.reason.empty()) {
            line += QStringLiteral(". ") + Texts::of(capability.reason);
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
