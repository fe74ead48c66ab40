// A reader of log files that needs no lock.
//
// One reading is: the info record, the entries from the newest back, the info record again. When
// both info records are equal nothing was changed in between, because every change of the log's
// contents changes the info record (its update time at least). Otherwise the reading is repeated.
// When the log does not come to rest, a run of entries that two readings in a row found alike is
// taken: all of these stood in the log between the two readings.
//
// A reading keeps an entry's number and fingerprint, so that the entries of a log of any size can
// be read once more, each known to be the one that was found.
#include "tools/evtlogctl/log_reader.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <thread>
#include <unordered_map>
#include <utility>

#include "eventlog/log_format.h"
#include "tools/evtlogctl/bytes.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_file.h"

namespace zusahpi::evtlogctl {
namespace {

using eventlog::LogType;
using eventlog::noEntry;

// How long a log that keeps changing is waited for to rest, the pauses between the readings, and
// how long it is read at all.
constexpr auto restingEffort = std::chrono::milliseconds{1000};
constexpr auto firstPause = std::chrono::microseconds{100};
constexpr auto longestPause = std::chrono::milliseconds{20};
constexpr auto longestReading = std::chrono::milliseconds{5000};

[[nodiscard]] EventLogInfoRecord readInfo(const LogFile &file) {
    EventLogInfoRecord info{};
    if (file.size() < eventlog::entriesOffset ||
        !file.read(eventlog::infoOffset, &info, sizeof info)) {
        fail(Status::damaged,
             "{} is no log: it is shorter than an empty log; name an event log file", file.path());
    }
    if (!isKnown(eventlog::typeOf(info))) {
        fail(Status::damaged,
             "{} is no log: its type is {} instead of 0 to 2; name an event log file", file.path(),
             info.type);
    }
    return info;
}

// One pass from the newest entry back to the oldest.
struct Walk {
    const EventLogInfoRecord &info;
    EntryReader &reader;
    std::vector<FoundEntry> found; // newest first
    SaHpiTimeT newestTime = 0;     // when the first of them was logged
    SaHpiTimeT oldestTime = 0;     // when the last of them was logged
    std::string damage;
};

[[nodiscard]] const EventLogEntryRecord *readEntry(Walk &walk, std::uint32_t number) {
    if (number < 1 || number > walk.info.maxUsed) {
        walk.damage = fmt::format("entry {} is out of range", number);
        return nullptr;
    }
    const EventLogEntryRecord *const record = walk.reader.at(number);
    if (record == nullptr) {
        walk.damage = fmt::format("the file ends before entry {}", number);
        return nullptr;
    }
    if (record->entry.EntryId != number) {
        walk.damage = fmt::format("entry {} calls itself {}", number, record->entry.EntryId);
        return nullptr;
    }
    if (record->deleted != 0) {
        walk.damage = fmt::format("entry {} is marked deleted", number);
        return nullptr;
    }
    return record;
}

void take(Walk &walk, const EventLogEntryRecord &record) {
    if (walk.found.empty()) {
        walk.newestTime = record.entry.Timestamp;
    }
    walk.oldestTime = record.entry.Timestamp;
    walk.found.push_back({record.entry.EntryId, fingerprint(record)});
}

// Of an entry that is not the oldest.
[[nodiscard]] std::uint32_t olderThan(const EventLogEntryRecord &record,
                                      const EventLogInfoRecord &info) {
    const std::uint32_t number = record.entry.EntryId;
    switch (eventlog::typeOf(info)) {
    case LogType::linked:
        return record.prev;
    case LogType::circular:
        return number == 1 ? info.maxUsed : number - 1;
    default:
        return number - 1;
    }
}

[[nodiscard]] std::string contradiction(std::uint32_t number, std::uint32_t newer) {
    return newer == noEntry
               ? fmt::format("the newest entry {} has a link to a newer one", number)
               : fmt::format("the links between entries {} and {} contradict each other", number,
                             newer);
}

// In a Linked log each entry must name the one that the walk came from, so a chain that runs in a
// circle ends the walk; in the other types each step takes the next lower number.
void walkBack(Walk &walk, std::size_t most) {
    const EventLogInfoRecord &info = walk.info;
    const bool linked = eventlog::typeOf(info) == LogType::linked;
    if (info.newest == noEntry && info.oldest == noEntry) {
        return;
    }
    std::uint32_t newer = noEntry;
    for (std::uint32_t number = info.newest; walk.found.size() < most;) {
        if (walk.found.size() >= info.maxUsed) {
            walk.damage = "the oldest entry is not reached";
            break;
        }
        const EventLogEntryRecord *const record = readEntry(walk, number);
        if (record == nullptr) {
            break;
        }
        if (linked && record->next != newer) {
            walk.damage = contradiction(number, newer);
            break;
        }
        take(walk, *record);
        if (number == info.oldest) {
            break;
        }
        newer = number;
        number = olderThan(*record, info);
    }
}

struct Reading {
    Snapshot snapshot;
    bool atRest = false; // nothing changed while it was read
};

// A full Circular log that wraps writes the new entry in the place of the oldest one before it
// writes the info record. What then stands in the oldest place is younger than the newest entry.
// (Where the log's time was set back that is so for good, and costs no more than time.)
[[nodiscard]] bool overwritesOldest(const Walk &walk) {
    const EventLogInfoRecord &info = walk.info;
    return walk.damage.empty() && eventlog::typeOf(info) == LogType::circular &&
           !walk.found.empty() && info.sa.Entries == info.sa.Size &&
           walk.found.size() == info.sa.Entries && walk.oldestTime > walk.newestTime;
}

[[nodiscard]] Reading readOnce(const LogFile &file, std::size_t most) {
    Reading reading;
    Snapshot &snapshot = reading.snapshot;
    snapshot.info = readInfo(file);
    snapshot.overlay = readOverlay(file, snapshot.info);
    EntryReader reader(file, snapshot.overlay);
    Walk walk{.info = snapshot.info, .reader = reader, .found = {}, .damage = {}};
    walkBack(walk, most);
    const std::size_t counted = snapshot.info.sa.Entries;
    if (walk.damage.empty() && walk.found.size() != std::min(counted, most)) {
        walk.damage =
            fmt::format("the log counts {} entries, but {} were found", counted, walk.found.size());
    }
    reading.atRest = sameBytes(snapshot.info, readInfo(file)) && !overwritesOldest(walk);
    std::reverse(walk.found.begin(), walk.found.end());
    snapshot.entries = std::move(walk.found);
    snapshot.damage = std::move(walk.damage);
    return reading;
}

} // namespace

Snapshot unchangedRun(const Snapshot &earlier, const Snapshot &later) {
    std::unordered_map<std::uint32_t, std::uint64_t> known;
    for (const FoundEntry &entry : earlier.entries) {
        known.emplace(entry.number, entry.fingerprint);
    }
    const auto unchanged = [&known](const FoundEntry &entry) {
        const auto found = known.find(entry.number);
        return found != known.end() && found->second == entry.fingerprint;
    };
    const auto end = later.entries.end();
    auto best = std::pair(end, end);
    for (auto begin = std::find_if(later.entries.begin(), end, unchanged); begin != end;) {
        const auto stop = std::find_if_not(begin, end, unchanged);
        if (stop - begin > best.second - best.first) {
            best = {begin, stop};
        }
        begin = std::find_if(stop, end, unchanged);
    }
    return {.info = later.info,
            .overlay = later.overlay,
            .entries = {best.first, best.second},
            .damage = {},
            .overwritten = 0};
}

SnapshotReader::SnapshotReader(const LogFile &file, const Snapshot &snapshot)
    : snapshot_(snapshot), entries_(file, snapshot.overlay) {
}

const EventLogEntryRecord *SnapshotReader::next() {
    while (at_ < snapshot_.entries.size()) {
        const FoundEntry &wanted = snapshot_.entries[at_++];
        const EventLogEntryRecord *const record = entries_.at(wanted.number);
        if (record != nullptr && fingerprint(*record) == wanted.fingerprint) {
            return record;
        }
        ++overwritten_;
    }
    return nullptr;
}

Snapshot readLog(const LogFile &file, std::size_t most) {
    const auto begin = std::chrono::steady_clock::now();
    auto pause = std::chrono::duration_cast<std::chrono::microseconds>(firstPause);
    Snapshot previous; // the last reading, once the log is known not to rest
    bool soundBefore = false;
    while (true) {
        Reading reading = readOnce(file, most);
        Snapshot &snapshot = reading.snapshot;
        if (reading.atRest) {
            return std::move(reading.snapshot);
        }
        const auto effort = std::chrono::steady_clock::now() - begin;
        if (effort < restingEffort) {
            std::this_thread::sleep_for(pause);
            pause = std::min<std::chrono::microseconds>(pause * 2, longestPause);
            continue;
        }
        const bool sound = snapshot.damage.empty();
        if (soundBefore && sound) {
            Snapshot result = unchangedRun(previous, snapshot);
            if (!result.entries.empty() || snapshot.entries.empty()) {
                return result;
            }
        }
        if (effort > longestReading) {
            fail(Status::systemRefused, "{} changes too fast to be read; try again in a moment",
                 file.path());
        }
        previous = std::move(snapshot);
        soundBefore = sound;
    }
}

Status reportReading(const LogFile &file, const Snapshot &snapshot, const SnapshotReader &reader,
                     std::string_view done) {
    const std::size_t overwritten = snapshot.overwritten + reader.overwritten();
    if (overwritten > 0) {
        complain(
            fmt::format("{}: another program overwrote {} entries while the log was read; they "
                        "are left out",
                        file.path(), overwritten));
    }
    if (snapshot.damage.empty()) {
        return Status::done;
    }
    complain(fmt::format("{} is damaged: {}; only the entries after that {}", file.path(),
                         snapshot.damage, done));
    return Status::damaged;
}

LogInfo readLogInfo(const std::string &path) {
    const LogFile file(path);
    return {.info = readInfo(file), .fileSize = file.size()};
}

} // namespace zusahpi::evtlogctl
