#include "screens/capability_words.h"

#include <string>

#include "base/enum_names.h"
#include "screens/texts/texts.h"

namespace ostrel::CapabilityWords {

QString topic(const Capability& capability) {
    return Texts::of("capability.topic." + std::string(nameOf(capability.topic)));
}

QString state(const Capability& capability) {
    return Texts::of("capability.state." + std::string(nameOf(capability.state)));
}

QString reason(const Capability& capability) {
    return capability.reason.empty() ? QString() : Texts::of(capability.reason);
}

}  // namespace ostrel::CapabilityWords
