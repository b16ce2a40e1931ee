#include "platform/linux/call_programs.h"

#include <algorithm>
#include <cctype>

namespace ostrel {
namespace {

struct Entry {
    std::string_view name;
    std::string_view identifier;
};

constexpr std::string_view kZoom = "us.zoom.xos";
constexpr std::string_view kTeams = "com.microsoft.teams";
constexpr std::string_view kNewTeams = "com.microsoft.teams2";
constexpr std::string_view kWebex = "com.cisco.webexmeetingsapp";
constexpr std::string_view kSlack = "com.tinyspeck.slackmacgap";
constexpr std::string_view kDiscord = "com.hnc.Discord";

// The names in small letters; of a web application its ID.
constexpr Entry kTable[] = {
    {"zoom", kZoom},
    {"zoom-client", kZoom},
    {"us.zoom.zoom", kZoom},
    {"teams", kTeams},
    {"microsoft teams", kTeams},
    {"microsoft teams - preview", kTeams},
    {"microsoft teams - insiders", kTeams},
    {"teams-insiders", kTeams},
    {"com.microsoft.teams", kTeams},
    {"teams-for-linux", kNewTeams},
    {"com.github.ismaelmartinez.teams_for_linux", kNewTeams},
    {"cifhbcnohmdccbgoicgdjpfamggdegmo", kNewTeams},
    {"ompifgpmddkgmclendfeacglnodjjndh", kNewTeams},
    {"webex", kWebex},
    {"ciscocollabhost", kWebex},
    {"com.cisco.webex", kWebex},
    {"slack", kSlack},
    {"com.slack.slack", kSlack},
    {"discord", kDiscord},
    {"discord-ptb", kDiscord},
    {"discordptb", kDiscord},
    {"discord-canary", kDiscord},
    {"discordcanary", kDiscord},
    {"com.discordapp.discord", kDiscord},
    {"com.discordapp.discordcanary", kDiscord},
    {"webcord", kDiscord},
    {"io.github.spacingbat3.webcord", kDiscord},
    {"vesktop", kDiscord},
    {"dev.vencord.vesktop", kDiscord},
};

constexpr Entry kNames[] = {
    {"Zoom", kZoom},
    {"Zoom", "app.zoom.us"},
    {"Zoom Clips", "us.zoom.ZoomClips"},
    {"Microsoft Teams classic", kTeams},
    {"Microsoft Teams", kNewTeams},
    {"Webex", kWebex},
    {"Webex Meetings", "com.cisco.webex.meetings"},
    {"Slack", kSlack},
    {"FaceTime", "com.apple.FaceTime"},
    {"Discord", kDiscord},
    {"Google Calendar", "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"},
};

constexpr std::string_view kWebApplicationPrefix = "com.google.Chrome.app.";
constexpr std::size_t kWebIDLength = 32;  // in letters from a to p

// The ID in "crx_ID", "crx__ID", "chrome-ID-Default", "msedge-_ID-Profile_1".
std::optional<std::string_view> webIDIn(std::string_view name) {
    for (std::size_t start = name.find_first_of("_-"); start != std::string_view::npos;
         start = name.find_first_of("_-", start + 1)) {
        const std::string_view rest = name.substr(start + 1);
        if (rest.substr(0, rest.find_first_not_of("abcdefghijklmnop")).size() == kWebIDLength &&
            (rest.size() == kWebIDLength || rest[kWebIDLength] == '-')) {
            return rest.substr(0, kWebIDLength);
        }
    }
    return std::nullopt;
}

std::optional<std::string> identifierInTable(std::string_view name) {
    const auto* entry = std::ranges::find(kTable, name, &Entry::name);
    return entry == std::end(kTable) ? std::nullopt : std::optional<std::string>(entry->identifier);
}

}  // namespace

std::string inSmallLetters(std::string_view name) {
    std::string result(name.substr(0, name.find_last_not_of(' ') + 1));
    std::ranges::transform(result, result.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return result;
}

std::optional<std::string> callProgramIdentifier(std::string_view name) {
    const std::string known = inSmallLetters(name);
    const auto webID = webIDIn(name);
    auto identifier = identifierInTable(webID ? *webID : std::string_view(known));
    if (!identifier && webID) {
        identifier = std::string(kWebApplicationPrefix).append(*webID);
    }
    return identifier;
}

std::optional<std::string_view> callProgramName(std::string_view identifier) {
    const auto* entry = std::ranges::find(kNames, identifier, &Entry::identifier);
    return entry == std::end(kNames) ? std::nullopt : std::optional(entry->name);
}

bool isWebApplication(std::string_view name) {
    return webIDIn(name).has_value();
}

}  // namespace ostrel
