// How often each record occurs: records are the same when all their bytes are, and a log may hold
// one several times.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "tools/evtlogctl/sel_record.h"

namespace zusahpi::sel {

using Counts = std::map<Record, std::size_t>;

[[nodiscard]] Counts countsOf(const std::vector<Record> &records);

// Takes one such record away; false when none is left.
[[nodiscard]] bool take(Counts &counts, const Record &record);

} // namespace zusahpi::sel
