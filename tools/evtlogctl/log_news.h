// What is new in a log since it was last looked at. Entries are known by number and fingerprint,
// and what stands behind the last known one is new; so a log that wraps, is cleared, loses entries
// to an operator or is replaced by another file is followed alike, and no entry is new twice. In a
// log that holds nothing known any more everything is new.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "tools/evtlogctl/log_reader.h"

namespace zusahpi::evtlogctl {

using EntryKey = std::pair<std::uint32_t, std::uint64_t>; // number, fingerprint

struct KnownEntries {
    std::vector<EntryKey> keys; // in ascending order: a set would take four times the memory
    std::size_t spare = 20'000; // that the log may not hold any more
};

void learn(KnownEntries &known, const Snapshot &snapshot);

struct News {
    Snapshot snapshot;    // with the new entries alone
    bool strange = false; // nothing is left of what was known, and something was
};

// Reads the newest `most` entries of the log.
using LogReading = std::function<Snapshot(std::size_t most)>;

// What is new, and known from now on. When `read` throws, nothing more is known than before.
[[nodiscard]] News takeNews(KnownEntries &known, const LogReading &read);

} // namespace zusahpi::evtlogctl
