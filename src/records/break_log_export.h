#pragma once

#include <string>
#include <vector>

#include "records/break_log_entry.h"

namespace ostrel {

class Calendar;

// The log for other programs, in the order of recording. Instants are ISO 8601 with the offset that
// the calendar's zone has at that moment.

// RFC 4180: a header line with the names of the fields, lines that end in CR LF.
[[nodiscard]] std::string exportCsv(const std::vector<BreakLogEntry>& entries,
                                    const Calendar& calendar);

// A field in quotes where it needs them (RFC 4180).
[[nodiscard]] std::string csvField(const std::string& text);

// One array of objects, with the same fields.
[[nodiscard]] std::string exportJson(const std::vector<BreakLogEntry>& entries,
                                     const Calendar& calendar);

}  // namespace ostrel
