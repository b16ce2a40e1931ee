#import "platform/macos/workspace_programs.h"

#import <AppKit/AppKit.h>

#include "platform/macos/text.h"

namespace ostrel {

std::vector<std::string> runningPrograms() {
    std::vector<std::string> identifiers;
    const pid_t own = [[NSRunningApplication currentApplication] processIdentifier];
    for (NSRunningApplication* program in [[NSWorkspace sharedWorkspace] runningApplications]) {
        NSString* const identifier = [program bundleIdentifier];
        const bool isInDock = [program activationPolicy] == NSApplicationActivationPolicyRegular;
        if (identifier && isInDock && [program processIdentifier] != own) {
            identifiers.push_back(toUtf8(identifier));
        }
    }
    return identifiers;
}

std::optional<std::string> runningProgramName(const std::string& identifier) {
    for (NSRunningApplication* program in [[NSWorkspace sharedWorkspace] runningApplications]) {
        NSString* const own = [program bundleIdentifier];
        NSString* const name = [program localizedName];
        if (own && name && toUtf8(own) == identifier) {
            return toUtf8(name);
        }
    }
    return std::nullopt;
}

}  // namespace ostrel
