// The structure of a log file: whether info record, chain, free list, ring and records agree.
//
// The file is read once, from front to back, without its lock; of each record only what the
// structure needs is kept (RecordIndex, 17 bytes). Every byte is hostile: no number is used before
// it was checked, and no walk takes more steps than there are records.
//
// An update that a crash interrupted is no damage: the log is checked as the next start will
// complete it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "eventlog/log_format.h"
#include "tools/evtlogctl/findings.h"
#include "tools/evtlogctl/log_file.h"

namespace zusahpi::evtlogctl {

// What a record is, as bits.
namespace trait {
inline constexpr std::uint8_t deleted = 1;  // by its own flag
inline constexpr std::uint8_t misnamed = 2; // its EntryId is not its number
inline constexpr std::uint8_t clean = 4;    // its reserved bytes are zero
inline constexpr std::uint8_t unlinked = 8; // it names no neighbour
inline constexpr std::uint8_t reached = 16; // the chain of entries leads to it
inline constexpr std::uint8_t listed = 32;  // the free list leads to it
inline constexpr std::uint8_t free = 64;    // and it is marked deleted
} // namespace trait

// What is kept of every record, by number less one.
struct RecordIndex {
    std::vector<std::uint32_t> prev;
    std::vector<std::uint32_t> next;
    std::vector<std::int64_t> time;
    std::vector<std::uint8_t> traits;
};

// A record of the transaction log area that a start will write to its place.
struct WaitingRecord {
    EventLogEntryRecord record;
    std::uint32_t slot;
};

struct CheckedLog {
    EventLogInfoRecord info{};
    struct stat status {};
    std::vector<WaitingRecord> waiting; // in the order in which they are written
    std::uint32_t records = 0;          // in the file, or about to be
    RecordIndex index;
    Findings findings;
    bool readable = false; // it is long enough to be a log
};

// Adds to `log.findings`. Throws Failure when the file cannot be read or is no regular file.
void checkLog(const LogFile &file, CheckedLog &log);

// The same, and waits for a log that another process is writing: what is found in a file that was
// just changed counts when it is still there after a second without a change.
[[nodiscard]] CheckedLog checkRestingLog(const LogFile &file, std::size_t mostOfAKind);

// Entry `number` as the next start will have it. The number is one of the index.
[[nodiscard]] EventLogEntryRecord recordOf(const LogFile &file, const CheckedLog &log,
                                           std::uint32_t number);

// What in a log file stops a start, or lets one fail that needs to write. Nothing is known of a
// file that cannot be read.
enum class StartObstacle {
    none,
    cutWhileMade,  // not even a whole info record: a crash came while the file was made
    damage,        // an update waits that cannot be applied
    waitingUpdate, // an update waits that can: the start has to write it
};
[[nodiscard]] StartObstacle startObstacle(const std::string &path);

} // namespace zusahpi::evtlogctl
