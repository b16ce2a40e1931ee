#include "platform/linux/application_identifier.h"

#include <initializer_list>
#include <string_view>

#include "platform/linux/call_programs.h"

namespace ostrel {
namespace {

std::string desktopFileIdentifier(std::string_view file) {
    constexpr std::string_view kSuffix = ".desktop";
    file = file.substr(file.find_last_of('/') + 1);
    if (file.ends_with(kSuffix)) {
        file.remove_suffix(kSuffix.size());
    }
    return std::string(file);
}

std::string ownName(const ProcessTable& processes, std::optional<std::int64_t> process,
                    const X11Windows::Names& names) {
    const std::string desktopFile = desktopFileIdentifier(names.desktopFile);
    for (const std::string& name : {names.instance, names.windowClass, desktopFile}) {
        if (isWebApplication(name)) {
            return name;
        }
    }
    if (process) {
        if (auto sandboxed = processes.sandboxedApplication(*process)) {
            return *sandboxed;
        }
    }
    for (const std::string& name :
         {names.gtkApplication, desktopFile, names.windowClass, names.instance}) {
        if (!name.empty()) {
            return name;
        }
    }
    return {};
}

}  // namespace

std::optional<std::string> applicationIdentifier(const ProcessTable& processes,
                                                 std::optional<std::int64_t> process,
                                                 const X11Windows::Names& names) {
    const std::string name = ownName(processes, process, names);
    if (name.empty()) {
        return std::nullopt;
    }
    return callProgramIdentifier(name).value_or(name);
}

}  // namespace ostrel
