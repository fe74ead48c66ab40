// Counting records.
#include "tools/evtlogctl/sel_counts.h"

namespace zusahpi::sel {

Counts countsOf(const std::vector<Record> &records) {
    Counts counts;
    for (const Record &record : records) {
        ++counts[record];
    }
    return counts;
}

bool take(Counts &counts, const Record &record) {
    const auto found = counts.find(record);
    if (found == counts.end() || found->second == 0) {
        return false;
    }
    --found->second;
    return true;
}

} // namespace zusahpi::sel
