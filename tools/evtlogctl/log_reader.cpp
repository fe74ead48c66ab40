// A reader of log files that needs no lock.
//
// One reading is: the info record, the entries from the newest back, the info record again. When
// both info records are equal nothing was changed in between, because every change of the log's
// contents changes the info record (its update time at least). Otherwise the reading is repeated.
// When the log does not come to rest, a run of entries that two readings in a row found alike is
// taken: all of these stood in the log between the two readings.
#include "tools/evtlogctl/log_reader.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
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
constexpr auto longestEffort = std::chrono::milliseconds{5000};

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

// The records of an interrupted or running update, which replace those of the same number.
using Overlay = std::vector<EventLogEntryRecord>;

[[nodiscard]] Overlay readOverlay(const LogFile &file, const EventLogInfoRecord &info) {
    Overlay overlay;
    if (info.updating == 0) {
        return overlay;
    }
    for (std::uint32_t slot = 0; slot < eventlog::transactionSlots; ++slot) {
        EventLogEntryRecord record{};
        if (!file.read(eventlog::slotOffset(slot), &record, sizeof record) ||
            record.entry.EntryId == noEntry) {
            break;
        }
        overlay.push_back(record);
    }
    return overlay;
}

// One pass from the newest entry back to the oldest.
struct Walk {
    const LogFile &file;
    const EventLogInfoRecord &info;
    Overlay overlay;
    std::string damage;
};

[[nodiscard]] std::optional<EventLogEntryRecord> readEntry(Walk &walk, std::uint32_t number) {
    if (number < 1 || number > walk.info.maxUsed) {
        walk.damage = fmt::format("entry {} is out of range", number);
        return std::nullopt;
    }
    // Slots are replayed in their order, so the last one of a number counts.
    const auto found =
        std::find_if(walk.overlay.rbegin(), walk.overlay.rend(),
                     [&](const auto &record) { return record.entry.EntryId == number; });
    EventLogEntryRecord record{};
    if (found != walk.overlay.rend()) {
        record = *found;
    } else if (!walk.file.read(eventlog::entryOffset(number), &record, sizeof record)) {
        walk.damage = fmt::format("the file ends before entry {}", number);
        return std::nullopt;
    }
    if (record.entry.EntryId != number) {
        walk.damage = fmt::format("entry {} calls itself {}", number, record.entry.EntryId);
        return std::nullopt;
    }
    if (record.deleted != 0) {
        walk.damage = fmt::format("entry {} is marked deleted", number);
        return std::nullopt;
    }
    return record;
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

// Newest first. In a Linked log each entry must name the one that the walk came from, so a chain
// that runs in a circle ends the walk; in the other types each step takes the next lower number.
[[nodiscard]] std::vector<EventLogEntryRecord> walkBack(Walk &walk, std::size_t most) {
    const EventLogInfoRecord &info = walk.info;
    const bool linked = eventlog::typeOf(info) == LogType::linked;
    std::vector<EventLogEntryRecord> entries;
    if (info.newest == noEntry && info.oldest == noEntry) {
        return entries;
    }
    // No more than the file can hold, whatever it says of itself.
    const auto room = static_cast<std::size_t>(walk.file.size() / eventlog::entrySize);
    entries.reserve(std::min({most, room, std::size_t{info.sa.Entries}}));
    std::uint32_t newer = noEntry;
    for (std::uint32_t number = info.newest; entries.size() < most;) {
        if (entries.size() >= info.maxUsed) {
            walk.damage = "the oldest entry is not reached";
            break;
        }
        const auto record = readEntry(walk, number);
        if (!record) {
            break;
        }
        if (linked && record->next != newer) {
            walk.damage = contradiction(number, newer);
            break;
        }
        entries.push_back(*record);
        if (number == info.oldest) {
            break;
        }
        newer = number;
        number = olderThan(*record, info);
    }
    return entries;
}

struct Reading {
    Snapshot snapshot;
    bool atRest = false; // nothing changed while it was read
};

// A full Circular log that wraps writes the new entry in the place of the oldest one before it
// writes the info record. What then stands in the oldest place is younger than the newest entry.
// (Where the log's time was set back that is so for good, and costs no more than time.)
[[nodiscard]] bool overwritesOldest(const Snapshot &snapshot) {
    const EventLogInfoRecord &info = snapshot.info;
    return snapshot.damage.empty() && eventlog::typeOf(info) == LogType::circular &&
           !snapshot.entries.empty() && info.sa.Entries == info.sa.Size &&
           snapshot.entries.size() == info.sa.Entries &&
           snapshot.entries.front().entry.Timestamp > snapshot.entries.back().entry.Timestamp;
}

[[nodiscard]] Reading readOnce(const LogFile &file, std::size_t most) {
    Reading reading;
    Snapshot &snapshot = reading.snapshot;
    snapshot.info = readInfo(file);
    Walk walk{file, snapshot.info, readOverlay(file, snapshot.info), {}};
    snapshot.entries = walkBack(walk, most);
    std::reverse(snapshot.entries.begin(), snapshot.entries.end());
    const std::size_t counted = snapshot.info.sa.Entries;
    if (walk.damage.empty() && snapshot.entries.size() != std::min(counted, most)) {
        walk.damage = fmt::format("the log counts {} entries, but {} were found", counted,
                                  snapshot.entries.size());
    }
    snapshot.damage = walk.damage;
    reading.atRest = sameBytes(snapshot.info, readInfo(file)) && !overwritesOldest(snapshot);
    return reading;
}

// But for its links, which change when its neighbours do.
[[nodiscard]] bool sameEntry(const EventLogEntryRecord &a, const EventLogEntryRecord &b) {
    return sameBytes(a.entry, b.entry) && sameBytes(a.rpt, b.rpt) && sameBytes(a.rdr, b.rdr);
}

} // namespace

Snapshot unchangedRun(const Snapshot &earlier, const Snapshot &later) {
    std::unordered_map<std::uint32_t, const EventLogEntryRecord *> known;
    for (const EventLogEntryRecord &entry : earlier.entries) {
        known.emplace(entry.entry.EntryId, &entry);
    }
    const auto unchanged = [&known](const EventLogEntryRecord &entry) {
        const auto found = known.find(entry.entry.EntryId);
        return found != known.end() && sameEntry(*found->second, entry);
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
    return {.info = later.info, .entries = {best.first, best.second}, .damage = {}};
}

Snapshot readLog(const std::string &path, std::size_t most) {
    const LogFile file(path);
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
        if (effort > longestEffort) {
            fail(Status::systemRefused, "{} changes too fast to be read; try again in a moment",
                 path);
        }
        previous = std::move(snapshot);
        soundBefore = sound;
    }
}

LogInfo readLogInfo(const std::string &path) {
    const LogFile file(path);
    return {.info = readInfo(file), .fileSize = file.size()};
}

} // namespace zusahpi::evtlogctl
