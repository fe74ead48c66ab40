// What is new in a System Event Log that is read again and again.
//
// A reading is the whole log of a controller, oldest record first. Until the next one the
// controller adds records at the end; it may lose records, the oldest when it is full and goes
// round, any when someone deletes them; and it may be cleared and begin anew, with the same record
// ids and, where it has no clock, the same times. A reading can also break off before its end
// without the command that made it knowing.
//
// Records are compared by all their bytes, each as often as it occurs. Of a reading and of what is
// known, which is the reading before it:
//
//   1. A reading of known records alone has no news. When the newest known record is missing in it,
//      it may have broken off: it says nothing, and what was known stays known.
//   2. A reading with the newest known record goes on from there: what is not known in it is new.
//   3. Any other reading is of a log that was cleared, or went round since: all of it is new. It is
//      `replaced`, and believed when another reading says so too.
//
// At the start, what is known are the records that were imported into our own log, which may have
// lost older ones, and may hold records of other controllers:
//
//   4. New is what follows the last known record; what stands before it was known once.
//   5. A reading without any known record is `replaced` as in 3.
#pragma once

#include <cstddef>
#include <vector>

#include "tools/evtlogctl/sel_record.h"

namespace zusahpi::sel {

struct Known {
    std::vector<Record> records; // oldest first
    bool ofLog = false;          // imported into our log; else a reading
};

struct News {
    std::vector<std::size_t> places; // of the new records in the reading, rising
    bool replaced = false;
    bool reaches = false; // the newest known record is in the reading
};

[[nodiscard]] News newsOf(const Known &known, const std::vector<Record> &reading);

// What is known when the first `added` of the news have arrived in our log.
[[nodiscard]] Known knownAfter(const Known &known, const std::vector<Record> &reading,
                               const News &news, std::size_t added);

} // namespace zusahpi::sel
