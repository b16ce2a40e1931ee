#include "records/break_log_export.h"

#include "platform/api/iso_time.h"

namespace ostrel {
namespace {

Json exported(const BreakLogEntry& entry, const Calendar& calendar) {
    Json object = asJson(entry);
    object["startedAt"] = isoLocalTime(calendar, entry.startedAt);
    object["endedAt"] = isoLocalTime(calendar, entry.endedAt);
    return object;
}

// The keys of the object, or its values.
template <class TextOf>
std::string csvLine(const Json& object, TextOf textOf) {
    std::string line;
    for (const auto& [key, value] : object.items()) {
        line += csvField(textOf(key, value)) + ',';
    }
    line.pop_back();
    return line + "\r\n";
}

}  // namespace

std::string csvField(const std::string& text) {
    if (text.find_first_of("\",\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character == '"' ? "\"\"" : std::string(1, character);
    }
    return quoted + '"';
}

std::string exportCsv(const std::vector<BreakLogEntry>& entries, const Calendar& calendar) {
    std::string csv =
        csvLine(asJson(BreakLogEntry{}), [](const std::string& key, const Json&) { return key; });
    for (const BreakLogEntry& entry : entries) {
        csv += csvLine(exported(entry, calendar), [](const std::string&, const Json& value) {
            return value.is_string() ? value.get<std::string>() : value.dump();
        });
    }
    return csv;
}

std::string exportJson(const std::vector<BreakLogEntry>& entries, const Calendar& calendar) {
    Json array = Json::array();
    for (const BreakLogEntry& entry : entries) {
        array.push_back(exported(entry, calendar));
    }
    return array.dump(2) + '\n';
}

}  // namespace ostrel
