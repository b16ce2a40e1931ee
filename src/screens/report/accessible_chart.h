#pragma once

namespace ostrel {

// Makes a screen reader take a DayChart for a list, its bars for the items, and a RangeChoice for a
// group. A second call does nothing.
void installAccessibleChart();

}  // namespace ostrel
