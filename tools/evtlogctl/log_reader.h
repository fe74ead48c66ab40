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
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "tools/evtlogctl/entry_reader.h"
#include "tools/evtlogctl/log_file.h"
#include "tools/evtlogctl/status.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// An entry as a reading found it. What it holds stays in the file.
struct FoundEntry {
    std::uint32_t number;
    std::uint64_t fingerprint;
};

// A log as it stood at one moment.
struct Snapshot {
    EventLogInfoRecord info{};
    Overlay overlay;                 // of the update that was not complete then
    std::vector<FoundEntry> entries; // oldest first
    std::string damage;              // what is wrong with the file; empty in a sound one
    std::size_t overwritten = 0;     // entries taken out because they were not there any more
};

inline constexpr std::size_t allEntries = std::numeric_limits<std::size_t>::max();

// Reads the newest `most` entries. In a damaged log the walk goes from the newest entry back to the
// damage, and the snapshot holds what it found. While another process keeps changing the log, the
// snapshot holds the entries that two readings found alike. Throws Failure when the file cannot be
// read or is no log.
[[nodiscard]] Snapshot readLog(const LogFile &file, std::size_t most = allEntries);

// Of the entries of `later` that stood in `earlier` too, the longest run without a gap. (There are
// several runs when the log was written once all over during the earlier reading.)
[[nodiscard]] Snapshot unchangedRun(const Snapshot &earlier, const Snapshot &later);

// The entries of a snapshot, oldest first. One that another process overwrote since the snapshot is
// passed over and counted. The file and the snapshot must outlive the reader.
class SnapshotReader {
  public:
    SnapshotReader(const LogFile &file, const Snapshot &snapshot);

    // Valid until the next call; null at the end.
    [[nodiscard]] const EventLogEntryRecord *next();

    [[nodiscard]] std::size_t overwritten() const {
        return overwritten_;
    }

  private:
    const Snapshot &snapshot_;
    EntryReader entries_;
    std::size_t at_ = 0;
    std::size_t overwritten_ = 0;
};

// Says on standard error what is wrong with the log and how many entries of it were overwritten
// until they were read; `done` is what became of the others ("are listed"). Returns the exit
// status.
[[nodiscard]] Status reportReading(const LogFile &file, const Snapshot &snapshot,
                                   const SnapshotReader &reader, std::string_view done);

struct LogInfo {
    EventLogInfoRecord info{};
    off_t fileSize = 0;
};

// The info record alone, as it stands in the file.
[[nodiscard]] LogInfo readLogInfo(const std::string &path);

} // namespace zusahpi::evtlogctl
