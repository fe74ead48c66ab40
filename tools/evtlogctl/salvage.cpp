// Which records of a damaged log are entries, and a sound log made of them.
#include "tools/evtlogctl/salvage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <optional>
#include <tuple>

#include <sys/stat.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/new_file.h"
#include "tools/evtlogctl/progress.h"

namespace zusahpi::evtlogctl {
namespace {

using eventlog::LogType;
using eventlog::noEntry;

// ---- Which records ------------------------------------------------------------------------------

[[nodiscard]] bool exists(const CheckedLog &log, std::uint32_t number) {
    return number >= 1 && number <= log.records;
}

[[nodiscard]] unsigned traitsOf(const CheckedLog &log, std::uint32_t number) {
    return log.index.traits[number - 1];
}

// A record that says of itself that it is entry `number`.
[[nodiscard]] bool saysSo(const CheckedLog &log, std::uint32_t number) {
    return (traitsOf(log, number) & (trait::deleted | trait::misnamed)) == 0;
}

// The type as it is, or, where it is none, the one that the records speak for.
[[nodiscard]] LogType likelyType(const CheckedLog &log) {
    const LogType type = eventlog::typeOf(log.info);
    if (isKnown(type)) {
        return type;
    }
    const bool linked = std::any_of(log.index.traits.begin(), log.index.traits.end(),
                                    [](unsigned each) { return (each & trait::unlinked) == 0; });
    return linked ? LogType::linked : LogType::circular;
}

// The end of a chain has one neighbour to vouch for it, or none.
[[nodiscard]] bool mayBeAnEnd(const CheckedLog &log, std::uint32_t number,
                              std::uint32_t neighbour) {
    const unsigned traits = traitsOf(log, number);
    return saysSo(log, number) ||
           ((traits & (trait::deleted | trait::free)) == 0 && exists(log, neighbour));
}

// From one end along `links` while every entry names the one that the walk came from in `back`:
// two records that name each other are entries even if their own number or flag is damaged.
[[nodiscard]] std::vector<std::uint32_t> walk(const CheckedLog &log, std::uint32_t end,
                                              const std::vector<std::uint32_t> &links,
                                              const std::vector<std::uint32_t> &back,
                                              std::vector<bool> &taken) {
    std::vector<std::uint32_t> found;
    std::uint32_t from = noEntry;
    for (std::uint32_t number = end;
         exists(log, number) && !taken[number - 1] && (traitsOf(log, number) & trait::free) == 0;) {
        if (back[number - 1] != from && !(from == noEntry && saysSo(log, number))) {
            break;
        }
        if (from == noEntry && !mayBeAnEnd(log, number, links[number - 1])) {
            break;
        }
        taken[number - 1] = true;
        found.push_back(number);
        from = number;
        number = links[number - 1];
    }
    return found;
}

void sortByTime(const CheckedLog &log, std::vector<std::uint32_t> &numbers) {
    std::sort(numbers.begin(), numbers.end(), [&](std::uint32_t a, std::uint32_t b) {
        return std::tuple(log.index.time[a - 1], a) < std::tuple(log.index.time[b - 1], b);
    });
}

[[nodiscard]] std::vector<std::uint32_t> orphans(const CheckedLog &log,
                                                 const std::vector<bool> &taken) {
    std::vector<std::uint32_t> found;
    for (std::uint32_t number = 1; number <= log.records; ++number) {
        if (!taken[number - 1] && saysSo(log, number) &&
            (traitsOf(log, number) & trait::listed) == 0) {
            found.push_back(number);
        }
    }
    sortByTime(log, found);
    return found;
}

[[nodiscard]] std::vector<std::uint32_t> ofChain(const CheckedLog &log) {
    const RecordIndex &index = log.index;
    std::vector<bool> taken(log.records);
    std::vector<std::uint32_t> all = walk(log, log.info.oldest, index.next, index.prev, taken);
    const std::vector<std::uint32_t> newest =
        walk(log, log.info.newest, index.prev, index.next, taken);
    const std::vector<std::uint32_t> between = orphans(log, taken);
    all.insert(all.end(), between.begin(), between.end());
    all.insert(all.end(), newest.rbegin(), newest.rend());
    return all;
}

// The ends of a log without a chain.
struct Ring {
    std::uint32_t oldest;
    std::uint32_t count;
};

[[nodiscard]] bool isRing(const CheckedLog &log, const Ring &ring, std::uint32_t top) {
    const EventLogInfoRecord &info = log.info;
    const std::uint64_t last = std::uint64_t{ring.oldest} + ring.count - 1;
    const bool wraps = last > info.sa.Size;
    return ring.oldest >= 1 && ring.oldest <= info.sa.Size && ring.count >= 1 &&
           ring.count <= info.sa.Size && top <= info.sa.Size &&
           (likelyType(log) == LogType::circular || (ring.oldest == 1 && !wraps)) &&
           top == (wraps ? info.sa.Size : last);
}

// How often a younger record precedes an older one.
[[nodiscard]] std::size_t setbacks(const CheckedLog &log, const Ring &ring) {
    std::size_t count = 0;
    for (std::uint32_t i = 1; i < std::min(ring.count, log.records); ++i) {
        const std::uint32_t older = (ring.oldest + i - 2) % log.info.sa.Size;
        const std::uint32_t newer = (ring.oldest + i - 1) % log.info.sa.Size;
        if (std::max(older, newer) < log.records && log.index.time[newer] < log.index.time[older]) {
            ++count;
        }
    }
    return count;
}

// Oldest, newest, number of entries and highest number say the same thing twice over, so that one
// of them may be wrong. Where it is not clear which one, no entry is to be lost, and then the times
// decide. Empty when more is wrong.
[[nodiscard]] std::optional<Ring> ringOf(const CheckedLog &log) {
    const EventLogInfoRecord &info = log.info;
    const std::uint32_t size = info.sa.Size;
    if (info.sa.Entries == 0 && (info.oldest == noEntry || info.newest == noEntry)) {
        return Ring{.oldest = 1, .count = 0};
    }
    const bool newestFits = info.newest >= 1 && info.newest <= size;
    const bool endsWrap = info.newest < info.oldest;
    const std::uint32_t byEnds = info.newest - info.oldest + 1 + (endsWrap ? size : 0);
    const std::uint32_t byNewest = info.newest + 1 - info.sa.Entries;
    const std::uint32_t oldest = info.newest < info.sa.Entries ? byNewest + size : byNewest;
    std::optional<Ring> best;
    const auto consider = [&](const Ring &ring, std::uint32_t top) {
        if (isRing(log, ring, top) &&
            (!best || ring.count > best->count ||
             (ring.count == best->count && setbacks(log, ring) < setbacks(log, *best)))) {
            best = ring;
        }
    };
    if (newestFits) {
        consider({.oldest = info.oldest, .count = byEnds}, info.maxUsed);
        consider({.oldest = oldest, .count = info.sa.Entries}, info.maxUsed);
    }
    consider({.oldest = info.oldest, .count = info.sa.Entries}, info.maxUsed);
    if (newestFits && byEnds == info.sa.Entries) { // highest number wrong
        consider({.oldest = info.oldest, .count = byEnds}, endsWrap ? size : info.newest);
    }
    return best;
}

// A record in the ring is an entry unless it says nothing that an entry says: a hole in the file.
[[nodiscard]] bool looksLikeAnEntry(const CheckedLog &log, std::uint32_t number) {
    constexpr unsigned both = trait::clean | trait::unlinked;
    return saysSo(log, number) || (traitsOf(log, number) & both) == both;
}

[[nodiscard]] std::vector<std::uint32_t> ofRing(const CheckedLog &log) {
    const std::optional<Ring> ring = ringOf(log);
    std::vector<std::uint32_t> all;
    if (!ring) {
        return orphans(log, std::vector<bool>(log.records));
    }
    // `i` may reach twice the Size, which 32 bits do not hold.
    for (std::uint64_t i = 0; i < ring->count; ++i) {
        const std::uint64_t place = ring->oldest + i;
        const auto number =
            static_cast<std::uint32_t>(place > log.info.sa.Size ? place - log.info.sa.Size : place);
        if (number > log.records) {
            i += log.info.sa.Size - number; // on to the other end of the ring, if there is one
        } else if (looksLikeAnEntry(log, number)) {
            all.push_back(number);
        }
    }
    return all;
}

// ---- The new log --------------------------------------------------------------------------------

[[nodiscard]] SaHpiBoolT flag(SaHpiBoolT value) {
    return value != SAHPI_FALSE ? SAHPI_TRUE : SAHPI_FALSE;
}

[[nodiscard]] EventLogInfoRecord newInfo(const CheckedLog &log, std::uint32_t count) {
    const EventLogInfoRecord &old = log.info;
    EventLogInfoRecord info;
    std::memset(&info, 0, sizeof info); // what lies between the fields too
    info.sa.Entries = count;
    info.sa.Size = std::max(old.sa.Size, count);
    info.sa.UserEventMaxSize = old.sa.UserEventMaxSize;
    info.sa.UpdateTimestamp = old.sa.UpdateTimestamp;
    info.sa.Enabled = flag(old.sa.Enabled);
    info.sa.OverflowFlag = flag(old.sa.OverflowFlag);
    info.sa.OverflowResetable = flag(old.sa.OverflowResetable);
    info.overflowAction =
        old.overflowAction <= ZUSAHPI_EL_WRITE_LAST ? old.overflowAction : ZUSAHPI_EL_DROP;
    info.sa.OverflowAction = old.sa.OverflowAction <= SAHPI_EL_OVERFLOW_OVERWRITE
                                 ? old.sa.OverflowAction
                                 : SAHPI_EL_OVERFLOW_DROP;
    info.type = static_cast<std::uint32_t>(likelyType(log));
    info.oldest = count == 0 ? noEntry : 1;
    info.newest = count == 0 ? noEntry : count;
    info.freeHead = noEntry;
    info.maxUsed = count;
    info.timeOffset = old.timeOffset;
    return info;
}

[[nodiscard]] EventLogEntryRecord newRecord(const EventLogEntryRecord &old, std::uint32_t number,
                                            const EventLogInfoRecord &info) {
    const bool linked = eventlog::typeOf(info) == LogType::linked;
    EventLogEntryRecord record;
    std::memset(&record, 0, sizeof record); // what lies between the fields too
    record.prev = linked && number > 1 ? number - 1 : noEntry;
    record.next = linked && number < info.newest ? number + 1 : noEntry;
    record.entry.EntryId = number;
    record.entry.Timestamp = old.entry.Timestamp;
    constexpr std::size_t begin = offsetof(EventLogEntryRecord, entry.Event);
    std::memcpy(reinterpret_cast<std::byte *>(&record) + begin,
                reinterpret_cast<const std::byte *>(&old) + begin, sizeof record - begin);
    return record;
}

} // namespace

std::vector<std::uint32_t> salvageable(const CheckedLog &log) {
    return likelyType(log) == LogType::linked ? ofChain(log) : ofRing(log);
}

void writeSalvage(const LogFile &from, const CheckedLog &log,
                  const std::vector<std::uint32_t> &numbers, const std::string &to) {
    NewFile file(to);
    const EventLogInfoRecord info = newInfo(log, static_cast<std::uint32_t>(numbers.size()));
    file.write(&info, sizeof info);
    EventLogEntryRecord slot;
    std::memset(&slot, 0, sizeof slot);
    slot.entry.EntryId = noEntry;
    for (std::uint32_t i = 0; i < eventlog::transactionSlots; ++i) {
        file.write(&slot, sizeof slot);
    }
    Progress progress(numbers.size());
    std::uint32_t written = 0;
    for (const std::uint32_t number : numbers) {
        const EventLogEntryRecord record = newRecord(recordOf(from, log, number), ++written, info);
        file.write(&record, sizeof record);
        progress.show(written);
    }
    const struct stat now = from.status();
    if (now.st_size != log.status.st_size || now.st_mtim.tv_sec != log.status.st_mtim.tv_sec ||
        now.st_mtim.tv_nsec != log.status.st_mtim.tv_nsec) {
        fail(Status::systemRefused,
             "{} was changed while its entries were saved; end the process that writes it",
             from.path());
    }
    file.keepAsNew(log.status);
}

} // namespace zusahpi::evtlogctl
