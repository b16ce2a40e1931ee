#import "platform/macos/workspace_programs.h"

#import <AppKit/AppKit.h>

#include "platform/macos/program_rule.h"
#include "platform/macos/text.h"

namespace ostrel {
namespace {

RunningProgram asTold(NSRunningApplication* program) {
    NSString* const identifier = [program bundleIdentifier];
    return {identifier ? std::optional(toUtf8(identifier)) : std::nullopt,
            [program activationPolicy] == NSApplicationActivationPolicyRegular,
            [program processIdentifier]};
}

}  // namespace

std::vector<std::string> runningPrograms() {
    std::vector<std::string> identifiers;
    const pid_t own = [[NSRunningApplication currentApplication] processIdentifier];
    for (NSRunningApplication* program in [[NSWorkspace sharedWorkspace] runningApplications]) {
        const RunningProgram told = asTold(program);
        if (isToChoose(told, own)) {
            identifiers.push_back(*told.identifier);
        }
    }
    return identifiers;
}

std::optional<std::string> runningProgramName(const std::string& identifier) {
    for (NSRunningApplication* program in [[NSWorkspace sharedWorkspace] runningApplications]) {
        NSString* const name = [program localizedName];
        if (name && asTold(program).identifier == identifier) {
            return toUtf8(name);
        }
    }
    return std::nullopt;
}

}  // namespace ostrel
