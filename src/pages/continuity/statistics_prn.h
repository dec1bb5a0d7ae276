// The statistics helper of the continuity results: from a result table of
// lines "week seconds difference PRN" it keeps the lines whose time moved
// on from the line before, in StatisticsPRN.txt beside the table. No
// action of the page calls it at present.
#pragma once

#include <string>

namespace tarnlog {

class PageHost;

inline constexpr std::string_view kStatisticsFinished = "Read file finish!";

// Reads `resultPath` and writes StatisticsPRN.txt in its folder. A field
// that can't be read stops the reading with its message ("Read week
// error!", "Read weeksec error!", "Read diff time error!", "Read PRN
// error!"); the end is always "Read file finish!". False when the table
// can't be opened.
bool WriteStatisticsPrn(const std::string& resultPath, PageHost& host);

}  // namespace tarnlog
