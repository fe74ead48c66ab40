// The counts of a log as members of a JSON object.
#pragma once

#include <cstddef>

#include "tools/evtlogctl/info_json.h"
#include "tools/evtlogctl/json_writer.h"
#include "tools/evtlogctl/stat_counts.h"

namespace zusahpi::evtlogctl {

// At most `rows` groups of each tally, the busiest ones; those left out are counted.
void putStatistics(JsonWriter &out, const DescribedLog &log, const LogCounts &counts,
                   std::size_t rows);

} // namespace zusahpi::evtlogctl
