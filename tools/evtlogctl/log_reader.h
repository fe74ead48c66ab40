// Reads any log file without taking its lock and without writing to it, also while another process
// writes it. An update that a crash interrupted is applied in memory, as the next start will apply
// it on disk.
//
// Every byte of the file is input and may be hostile: no number from it is used before it was
// checked, each step of a walk is checked against the step before, and no walk takes more steps
// than the log has entries.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <sys/types.h>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// A log as it stood at one moment.
struct Snapshot {
    EventLogInfoRecord info{};
    std::vector<EventLogEntryRecord> entries; // oldest first
    std::string damage;                       // what is wrong with the file; empty in a sound one
};

inline constexpr std::size_t allEntries = std::numeric_limits<std::size_t>::max();

// Reads the newest `most` entries. In a damaged log the walk goes from the newest entry back to the
// damage, and the snapshot holds what it found. While another process keeps changing the log, the
// snapshot holds the entries that two readings found alike. Throws Failure when the file cannot be
// read or is no log.
[[nodiscard]] Snapshot readLog(const std::string &path, std::size_t most = allEntries);

// Of the entries of `later` that stood in `earlier` too, the longest run without a gap. (There are
// several runs when the log was written once all over during the earlier reading.)
[[nodiscard]] Snapshot unchangedRun(const Snapshot &earlier, const Snapshot &later);

struct LogInfo {
    EventLogInfoRecord info{};
    off_t fileSize = 0;
};

// The info record alone, as it stands in the file.
[[nodiscard]] LogInfo readLogInfo(const std::string &path);

} // namespace zusahpi::evtlogctl
