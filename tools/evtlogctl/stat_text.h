// The counts of a log as tables with bars, for people.
#pragma once

#include <cstddef>
#include <string>

#include "tools/evtlogctl/info_json.h"
#include "tools/evtlogctl/stat_counts.h"

namespace zusahpi::evtlogctl {

struct TableShape {
    std::size_t rows;  // of each table, at most
    std::size_t width; // of a line, in characters; lines of narrow terminals are longer than that
};

// Printable ASCII, but for the name of the file.
[[nodiscard]] std::string statisticsText(const DescribedLog &log, const LogCounts &counts,
                                         const TableShape &shape);

} // namespace zusahpi::evtlogctl
