#include "platform/linux/application_name.h"

#include "platform/linux/call_programs.h"
#include "platform/linux/desktop_entry.h"

namespace ostrel {

std::optional<std::string> applicationName(const std::string& identifier,
                                           const std::string& locale) {
    if (const auto known = callProgramName(identifier)) {
        return std::string(*known);
    }
    // A window class may begin with a capital letter where the file's name does not.
    for (const std::string& name : {identifier, inSmallLetters(identifier)}) {
        if (const auto entry = DesktopEntry::ofApplication(name)) {
            const std::string called = entry->localText("Name", locale);
            return called.empty() ? std::nullopt : std::optional(called);
        }
    }
    return std::nullopt;
}

}  // namespace ostrel
