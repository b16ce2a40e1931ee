#include "app/desktop/control_service.h"

#include <utility>

#include "app/desktop/control_names.h"
#include "platform/linux/dbus_questions.h"

namespace ostrel {

ControlService::ControlService(Control::Services services, SessionBusKeeper& keeper)
    : control_(std::move(services)), keeper_(keeper) {
    subscriptions_.push_back(keeper_.came.subscribe([this] { appear(); }));
    subscriptions_.push_back(keeper_.lost.subscribe([this] { object_.reset(); }));
    if (keeper_.bus()) {
        appear();
    }
}

void ControlService::appear() {
    constexpr uint kQueue = 0;
    const QDBusConnection& bus = *keeper_.bus();
    object_ = std::make_unique<ControlObject>(bus, control_, ControlObject::usersOf(bus));
    ask(bus,
        questionToBus(QStringLiteral("RequestName"), {QString(ControlNames::kService), kQueue}),
        object_.get(), [](const QDBusMessage&) {});
}

}  // namespace ostrel
