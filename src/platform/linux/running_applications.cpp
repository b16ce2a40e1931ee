#include "platform/linux/running_applications.h"

#include <unistd.h>

#include <set>

#include "platform/linux/application_identifier.h"

namespace ostrel {

std::vector<std::string> runningApplications() {
    const X11Windows windows;
    const ProcessTable processes;
    std::set<std::string> found;
    for (const X11Windows::Client& client :
         windows.onScreen().value_or(std::vector<X11Windows::Client>())) {
        if (client.process == getpid()) {
            continue;
        }
        if (auto identifier =
                applicationIdentifier(processes, client.process, windows.namesOf(client.window))) {
            found.insert(std::move(*identifier));
        }
    }
    return {found.begin(), found.end()};
}

}  // namespace ostrel
