#include "app/desktop/status_command.h"

#include <QCoreApplication>
#include <cstdio>
#include <string_view>

#include "base/enum_names.h"
#include "platform/linux/linux_capabilities.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

QString textOf(std::string_view prefix, std::string_view name) {
    return Texts::of(std::string(prefix) + std::string(name));
}

void print(const std::vector<Capability>& capabilities) {
    for (const Capability& capability : capabilities) {
        QString line = textOf("capability.topic.", nameOf(capability.topic)) +
                       QStringLiteral(": ") + textOf("capability.state.", nameOf(capability.state));
        if (!capability.reason.empty()) {
            line += QStringLiteral(". ") + Texts::of(capability.reason);
        }
        std::printf("%s\n", line.toUtf8().constData());
    }
}

}  // namespace

// Without a window of its own, and therefore also where there is no display.
int runStatusCommand(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    findCapabilities(QDBusConnection::sessionBus(), QDBusConnection::systemBus(),
                     QCoreApplication::instance(), [](const std::vector<Capability>& found) {
                         print(found);
                         QCoreApplication::quit();
                     });
    return QCoreApplication::exec();
}

}  // namespace ostrel
