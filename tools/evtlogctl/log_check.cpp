// From a file to findings: info record, transaction log area, records one after another, and from
// their index chain and free list, or the ring.
#include "tools/evtlogctl/log_check.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <thread>
#include <utility>

#include <fmt/format.h>

#include "constants/type_ids.h"
#include "eventlog/retrieval.h"
#include "tools/evtlogctl/entry_check.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/progress.h"

namespace zusahpi::evtlogctl {
namespace {

using eventlog::LogType;
using eventlog::noEntry;

constexpr std::size_t recordsAtOnce = 64;

[[nodiscard]] Place entryPlace(std::uint32_t number, std::size_t member = 0) {
    return {eventlog::entryOffset(number) + static_cast<off_t>(member),
            fmt::format("entry {}", number), number};
}

// Where a record counts: in its own place, or in a slot that replaces it.
[[nodiscard]] const WaitingRecord *waitingFor(const CheckedLog &log, std::uint32_t number) {
    const auto found =
        std::find_if(log.waiting.rbegin(), log.waiting.rend(),
                     [&](const auto &each) { return each.record.entry.EntryId == number; });
    return found == log.waiting.rend() ? nullptr : &*found;
}

[[nodiscard]] Place placeOf(const CheckedLog &log, std::uint32_t number, std::size_t member = 0) {
    const WaitingRecord *const waiting = waitingFor(log, number);
    if (waiting == nullptr) {
        return entryPlace(number, member);
    }
    return {eventlog::slotOffset(waiting->slot) + static_cast<off_t>(member),
            fmt::format("entry {} in transaction slot {}", number, waiting->slot), number};
}

template <typename... Arguments>
void damage(CheckedLog &log, const Place &place, fmt::format_string<Arguments...> format,
            Arguments &&...arguments) {
    const fmt::string_view likeness = format;
    report(log.findings, Weight::damage, place, {likeness.data(), likeness.size()},
           fmt::format(format, std::forward<Arguments>(arguments)...));
}

template <typename... Arguments>
void notice(CheckedLog &log, const Place &place, fmt::format_string<Arguments...> format,
            Arguments &&...arguments) {
    const fmt::string_view likeness = format;
    report(log.findings, Weight::notice, place, {likeness.data(), likeness.size()},
           fmt::format(format, std::forward<Arguments>(arguments)...));
}

[[nodiscard]] std::string numberText(std::uint32_t number) {
    return number == noEntry ? "none" : fmt::format("{}", number);
}

#define INFO_PLACE(member)                                                                         \
    Place {                                                                                        \
        eventlog::infoOffset + static_cast<off_t>(offsetof(EventLogInfoRecord, member)), {         \
        }                                                                                          \
    }

// ---- The info record ----------------------------------------------------------------------------

void checkFlag(CheckedLog &log, SaHpiBoolT value, const Place &place, const char *name) {
    if (value > 1) {
        notice(log, place, "{} is {} instead of 0 or 1", name, value);
    }
}

// Bytes that hold nothing: what the compiler puts between members is not reachable by name.
void checkUnusedInfoBytes(CheckedLog &log) {
    struct Gap {
        std::size_t begin;
        std::size_t end;
    };
    constexpr std::array gaps = {
        Gap{offsetof(EventLogInfoRecord, sa.UserEventMaxSize) + sizeof(SaHpiUint32T),
            offsetof(EventLogInfoRecord, sa.UpdateTimestamp)},
        Gap{offsetof(EventLogInfoRecord, sa.OverflowResetable) + sizeof(SaHpiBoolT),
            offsetof(EventLogInfoRecord, sa.OverflowAction)},
        Gap{offsetof(EventLogInfoRecord, reserved), sizeof(EventLogInfoRecord)}};
    std::array<unsigned char, sizeof(EventLogInfoRecord)> bytes{};
    std::memcpy(bytes.data(), &log.info, bytes.size());
    for (const auto &[begin, end] : gaps) {
        const bool used = std::any_of(bytes.begin() + begin, bytes.begin() + end,
                                      [](unsigned char byte) { return byte != 0; });
        if (used) {
            notice(log, {eventlog::infoOffset + static_cast<off_t>(begin), {}},
                   "{} reserved bytes are not zero", end - begin);
        }
    }
}

void checkSettings(CheckedLog &log) {
    const EventLogInfoRecord &info = log.info;
    checkFlag(log, info.sa.Enabled, INFO_PLACE(sa.Enabled), "Enabled");
    checkFlag(log, info.sa.OverflowFlag, INFO_PLACE(sa.OverflowFlag), "OverflowFlag");
    checkFlag(log, info.sa.OverflowResetable, INFO_PLACE(sa.OverflowResetable),
              "OverflowResetable");
    const auto reported = static_cast<std::uint32_t>(info.sa.OverflowAction);
    if (!isConstant(reported, type_id::eventLogOverflowAction)) {
        notice(log, INFO_PLACE(sa.OverflowAction), "OverflowAction is {}, which stands for nothing",
               reported);
    }
    if (!isKnown(eventlog::typeOf(info))) {
        damage(log, INFO_PLACE(type), "the log's type is {}, which stands for nothing", info.type);
    }
    if (info.overflowAction > ZUSAHPI_EL_WRITE_LAST) {
        notice(log, INFO_PLACE(overflowAction), "overflowAction is {}, which stands for nothing",
               info.overflowAction);
    }
    if (info.updating > 1) {
        notice(log, INFO_PLACE(updating), "updating is {} instead of 0 or 1", info.updating);
    }
    checkUnusedInfoBytes(log);
}

// ---- The transaction log area -------------------------------------------------------------------

[[nodiscard]] bool canBeApplied(std::uint32_t number, const EventLogInfoRecord &info) {
    return number != 0 && number <= info.maxUsed && number <= info.sa.Size;
}

// Returns whether a start can apply the update.
[[nodiscard]] bool readWaitingUpdate(const LogFile &file, CheckedLog &log) {
    for (std::uint32_t slot = 0; slot < eventlog::transactionSlots; ++slot) {
        WaitingRecord waiting{.record = {}, .slot = slot};
        const Place place = {eventlog::slotOffset(slot), fmt::format("transaction slot {}", slot)};
        if (!file.read(place.offset, &waiting.record, sizeof waiting.record)) {
            damage(log, place, "the file ends inside the slot, so no start can apply the update");
            return false;
        }
        const std::uint32_t number = waiting.record.entry.EntryId;
        if (number == noEntry) {
            break;
        }
        if (!canBeApplied(number, log.info)) {
            damage(log, place,
                   "it holds entry {}, which the log does not have, so no start can apply the "
                   "update",
                   number);
            return false;
        }
        log.waiting.push_back(waiting);
    }
    return true;
}

void checkWaitingUpdate(const LogFile &file, CheckedLog &log) {
    if (log.info.updating == 0) {
        return;
    }
    if (eventlog::typeOf(log.info) != LogType::linked) {
        damage(log, INFO_PLACE(updating), "an update waits, which is so in Linked logs alone");
    }
    if (readWaitingUpdate(file, log) && eventlog::typeOf(log.info) == LogType::linked) {
        notice(log, INFO_PLACE(updating),
               "an interrupted update of {} records waits; the next start completes it",
               log.waiting.size());
    }
}

// ---- Records ------------------------------------------------------------------------------------

// Those that the file holds from end to end.
[[nodiscard]] std::uint32_t wholeRecords(const CheckedLog &log) {
    constexpr off_t most = noEntry - 1;
    const off_t inFile = (log.status.st_size - eventlog::entriesOffset) / eventlog::entrySize;
    return static_cast<std::uint32_t>(std::min(inFile, most));
}

// Also those that an update is about to append. What lies further out cannot belong to it.
[[nodiscard]] std::uint32_t countRecords(const CheckedLog &log) {
    std::uint32_t count = wholeRecords(log);
    const std::uint32_t furthest =
        count + std::min(eventlog::transactionSlots, noEntry - 1 - count);
    for (const WaitingRecord &waiting : log.waiting) {
        const std::uint32_t number = waiting.record.entry.EntryId;
        if (number <= furthest) {
            count = std::max(count, number);
        }
    }
    return count;
}

void checkLength(CheckedLog &log) {
    const off_t size = log.status.st_size;
    const std::uint32_t maxUsed = log.info.maxUsed;
    if (maxUsed > log.records) {
        damage(log, {size, {}}, "the file ends here, {} bytes before the end of entry {}",
               eventlog::fileSize(maxUsed) - size, maxUsed);
        return;
    }
    const off_t rest = (size - eventlog::entriesOffset) % eventlog::entrySize;
    if (rest != 0 && size > eventlog::fileSize(maxUsed)) {
        notice(log, {size - rest, {}},
               "{} bytes of an unfinished record end the file; the next start cuts them off", rest);
    }
}

[[nodiscard]] bool isZero(const EventLogEntryRecord &record, std::size_t begin, std::size_t end) {
    const auto *const bytes = reinterpret_cast<const unsigned char *>(&record);
    return std::all_of(bytes + begin, bytes + end, [](unsigned char byte) { return byte == 0; });
}

constexpr std::size_t reservedBegin = offsetof(EventLogEntryRecord, reserved);
constexpr std::size_t reservedEnd = offsetof(EventLogEntryRecord, entry);
constexpr std::size_t gapBegin =
    offsetof(EventLogEntryRecord, entry.EntryId) + sizeof(SaHpiEventLogEntryIdT);
constexpr std::size_t gapEnd = offsetof(EventLogEntryRecord, entry.Timestamp);

[[nodiscard]] std::uint8_t traitsOf(const EventLogEntryRecord &record, std::uint32_t number) {
    const bool clean =
        isZero(record, reservedBegin, reservedEnd) && isZero(record, gapBegin, gapEnd);
    unsigned traits = 0;
    traits |= record.deleted != 0 ? trait::deleted : 0U;
    traits |= record.entry.EntryId != number ? trait::misnamed : 0U;
    traits |= clean ? trait::clean : 0U;
    traits |= record.prev == noEntry && record.next == noEntry ? trait::unlinked : 0U;
    return static_cast<std::uint8_t>(traits);
}

// Whether a record of a log without a chain is one of its entries.
[[nodiscard]] bool isInUse(const EventLogInfoRecord &info, std::uint32_t number) {
    return number <= info.maxUsed &&
           !(eventlog::typeOf(info) == LogType::circular && eventlog::outsideRing(number, info));
}

void checkUnlinkedRecord(CheckedLog &log, const EventLogEntryRecord &record, const Place &place) {
    if (record.deleted != 0) {
        damage(log, place, "the entry is marked deleted");
    }
    if (record.prev != noEntry || record.next != noEntry) {
        notice(log,
               {place.offset + static_cast<off_t>(offsetof(EventLogEntryRecord, prev)), place.what},
               "the entry has links ({} and {}), which is so in Linked logs alone",
               numberText(record.prev), numberText(record.next));
    }
}

void checkLiveRecord(CheckedLog &log, const EventLogEntryRecord &record, const Place &place) {
    if (!isZero(record, reservedBegin, reservedEnd)) {
        notice(log, {place.offset + static_cast<off_t>(reservedBegin), place.what},
               "{} reserved bytes of the entry are not zero", reservedEnd - reservedBegin);
    }
    if (!isZero(record, gapBegin, gapEnd)) {
        notice(log, {place.offset + static_cast<off_t>(gapBegin), place.what},
               "{} reserved bytes of the entry are not zero", gapEnd - gapBegin);
    }
    checkValues(record, place, log.findings);
}

void checkRecord(CheckedLog &log, const EventLogEntryRecord &record, std::uint32_t number) {
    const Place place = placeOf(log, number);
    const EventLogInfoRecord &info = log.info;
    const bool linked = eventlog::typeOf(info) == LogType::linked;
    if (record.entry.EntryId != number) {
        damage(log, placeOf(log, number, offsetof(EventLogEntryRecord, entry.EntryId)),
               "the entry calls itself {}", record.entry.EntryId);
    }
    if (linked && record.deleted > 1) {
        notice(log, place, "deleted is {} instead of 0 or 1", record.deleted);
    }
    if (!isKnown(eventlog::typeOf(info)) ||
        (linked ? record.deleted == 0 : isInUse(info, number))) {
        checkLiveRecord(log, record, place);
        if (!linked && isKnown(eventlog::typeOf(info))) {
            checkUnlinkedRecord(log, record, place);
        }
    }
}

void indexRecord(CheckedLog &log, const EventLogEntryRecord &record, std::uint32_t number) {
    log.index.prev.push_back(record.prev);
    log.index.next.push_back(record.next);
    log.index.time.push_back(record.entry.Timestamp);
    log.index.traits.push_back(traitsOf(record, number));
}

void reserveIndex(CheckedLog &log) {
    log.index.prev.reserve(log.records);
    log.index.next.reserve(log.records);
    log.index.time.reserve(log.records);
    log.index.traits.reserve(log.records);
}

void readRecords(const LogFile &file, CheckedLog &log) {
    reserveIndex(log);
    std::vector<EventLogEntryRecord> block(recordsAtOnce);
    Progress progress(log.records);
    for (std::uint32_t before = 0; before < log.records;) {
        const auto count = std::min<std::size_t>(recordsAtOnce, log.records - before);
        std::memset(block.data(), 0, count * sizeof block[0]); // should the file shrink meanwhile
        (void)file.read(eventlog::entryOffset(before + 1), block.data(), count * sizeof block[0]);
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t number = before + 1 + static_cast<std::uint32_t>(i);
            const WaitingRecord *const waiting = waitingFor(log, number);
            if (number > wholeRecords(log)) { // one that the file ends in is none
                block[i] = {};
            }
            const EventLogEntryRecord &record = waiting != nullptr ? waiting->record : block[i];
            indexRecord(log, record, number);
            if (number <= log.info.maxUsed) { // what lies behind is dead
                checkRecord(log, record, number);
            }
        }
        before += static_cast<std::uint32_t>(count);
        progress.show(before);
    }
}

// ---- The chain of a Linked log ------------------------------------------------------------------

[[nodiscard]] std::uint8_t &traits(CheckedLog &log, std::uint32_t number) {
    return log.index.traits[number - 1];
}

[[nodiscard]] bool isNumber(const CheckedLog &log, std::uint32_t number) {
    return number >= 1 && number <= std::min(log.records, log.info.maxUsed);
}

// Of two entries that follow each other.
void checkTimes(CheckedLog &log, std::uint32_t older, std::uint32_t newer) {
    if (log.index.time[newer - 1] < log.index.time[older - 1]) {
        notice(log, placeOf(log, newer, offsetof(EventLogEntryRecord, entry.Timestamp)),
               "it was logged before entry {}, which precedes it", older);
    }
}

// One step of the walk from the oldest entry. False ends the walk: what follows is in doubt.
[[nodiscard]] bool checkStep(CheckedLog &log, std::uint32_t from, std::uint32_t number) {
    const Place link = from == noEntry ? INFO_PLACE(oldest)
                                       : placeOf(log, from, offsetof(EventLogEntryRecord, next));
    const char *const what = from == noEntry ? "the oldest entry" : "the entry after it";
    if (!isNumber(log, number)) {
        damage(log, link, "{} is said to be {}, which the log does not have", what,
               numberText(number));
        return false;
    }
    if ((traits(log, number) & trait::reached) != 0) {
        damage(log, link, "{} is said to be {}, so that the chain runs in a circle", what, number);
        return false;
    }
    if ((traits(log, number) & trait::free) != 0) {
        damage(log, link, "{} is said to be {}, which is on the free list", what, number);
        return false;
    }
    const std::uint32_t back = log.index.prev[number - 1];
    if (back != from) {
        damage(log, placeOf(log, number, offsetof(EventLogEntryRecord, prev)),
               "the entry before it is said to be {}, but the chain comes from {}",
               numberText(back), numberText(from));
        return false;
    }
    return true;
}

void enterChain(CheckedLog &log, std::uint32_t number) {
    traits(log, number) |= trait::reached;
    if ((traits(log, number) & trait::deleted) != 0) {
        damage(log, placeOf(log, number), "the entry is in the chain, but marked deleted");
    }
}

// From the oldest entry on. Returns the number of entries; `whole` says whether the walk came to
// the end of the chain.
[[nodiscard]] std::uint32_t walkForward(CheckedLog &log, bool &whole) {
    std::uint32_t count = 0;
    std::uint32_t from = noEntry;
    std::uint32_t number = log.info.oldest;
    whole = false;
    while (number != noEntry || from == noEntry) {
        if (!checkStep(log, from, number)) {
            return count;
        }
        enterChain(log, number);
        if (from != noEntry) {
            checkTimes(log, from, number);
        }
        ++count;
        from = number;
        number = log.index.next[number - 1];
    }
    whole = true;
    if (from != log.info.newest) {
        damage(log, INFO_PLACE(newest),
               "the newest entry is said to be {}, but the chain ends at {}",
               numberText(log.info.newest), from);
    }
    return count;
}

// From the newest entry back over what the broken walk did not reach.
[[nodiscard]] std::uint32_t walkBack(CheckedLog &log) {
    std::uint32_t count = 0;
    std::uint32_t number = log.info.newest;
    while (isNumber(log, number) && (traits(log, number) & (trait::reached | trait::free)) == 0) {
        enterChain(log, number);
        ++count;
        number = log.index.prev[number - 1];
    }
    return count;
}

// Marks, without a word, what is free by both the list and the record's own flag: should a broken
// chain lead there, it is not followed.
void markFreeRecords(CheckedLog &log) {
    std::uint32_t number = log.info.freeHead;
    while (isNumber(log, number) &&
           (traits(log, number) & (trait::deleted | trait::free)) == trait::deleted) {
        traits(log, number) |= trait::free;
        number = log.index.next[number - 1];
    }
}

// Returns whether the walk came to the end of the list.
[[nodiscard]] bool walkFreeList(CheckedLog &log) {
    std::uint32_t from = noEntry;
    for (std::uint32_t number = log.info.freeHead; number != noEntry;) {
        const Place link = from == noEntry
                               ? INFO_PLACE(freeHead)
                               : placeOf(log, from, offsetof(EventLogEntryRecord, next));
        if (!isNumber(log, number)) {
            damage(log, link, "the next free record is said to be {}, which the log does not have",
                   number);
            return false;
        }
        if ((traits(log, number) & trait::listed) != 0) {
            damage(log, link,
                   "the next free record is said to be {}, so that the free list runs in a circle",
                   number);
            return false;
        }
        if ((traits(log, number) & trait::reached) != 0) {
            damage(log, link, "the next free record is said to be {}, which is an entry", number);
            return false;
        }
        traits(log, number) |= trait::listed;
        if ((traits(log, number) & trait::deleted) == 0) {
            damage(log, placeOf(log, number),
                   "the record is on the free list, but not marked deleted");
        }
        from = number;
        number = log.index.next[number - 1];
    }
    return true;
}

// A broken free list leads to none of the records behind the break, so these are not reported.
void checkOrphans(CheckedLog &log, bool freeListWhole) {
    for (std::uint32_t number = 1; isNumber(log, number); ++number) {
        const unsigned each = traits(log, number);
        if ((each & (trait::reached | trait::listed | trait::free)) != 0) {
            continue;
        }
        if ((each & trait::deleted) == 0) {
            damage(log, placeOf(log, number), "the entry is in no chain");
        } else if (freeListWhole) {
            damage(log, placeOf(log, number),
                   "the record is marked deleted, but not on the free list");
        }
    }
}

void checkCount(CheckedLog &log, std::uint32_t count) {
    if (log.info.sa.Entries != count) {
        damage(log, INFO_PLACE(sa.Entries), "the log counts {} entries, but {} were found",
               log.info.sa.Entries, count);
    }
}

void checkLinkedLog(CheckedLog &log) {
    const EventLogInfoRecord &info = log.info;
    markFreeRecords(log);
    std::uint32_t count = 0;
    if (info.oldest != noEntry || info.newest != noEntry) {
        bool whole = false;
        count = walkForward(log, whole);
        if (!whole) {
            count += walkBack(log);
        }
    }
    const bool freeListWhole = walkFreeList(log);
    checkOrphans(log, freeListWhole);
    checkCount(log, count);
}

// ---- The ring of the other logs -----------------------------------------------------------------

void checkRingTimes(CheckedLog &log, std::uint32_t count, std::uint32_t top) {
    std::uint32_t older = log.info.oldest;
    for (std::uint32_t i = 1; i < count; ++i) {
        const std::uint32_t newer = older == top ? 1 : older + 1;
        if (std::max(older, newer) > log.records) {
            return; // the file is too short, which was reported
        }
        checkTimes(log, older, newer);
        older = newer;
    }
}

// Neither a Simple nor a Circular log has gaps, so its ends say which records are its entries.
void checkRing(CheckedLog &log) {
    const EventLogInfoRecord &info = log.info;
    const bool circular = eventlog::typeOf(info) == LogType::circular;
    if (info.freeHead != noEntry) {
        notice(log, INFO_PLACE(freeHead),
               "the log has a free list ({}), which is so in Linked logs alone", info.freeHead);
    }
    if (info.oldest == noEntry && info.newest == noEntry) {
        checkCount(log, 0);
        if (info.maxUsed != 0) {
            damage(log, INFO_PLACE(maxUsed),
                   "the highest number used is {}, but the log has no oldest entry", info.maxUsed);
        }
        return;
    }
    const bool wrapped = circular && info.newest < info.oldest;
    const std::uint32_t top = wrapped ? info.sa.Size : info.newest;
    if (info.newest < 1 || info.newest > info.sa.Size) {
        damage(log, INFO_PLACE(newest),
               "the newest entry is said to be {}, which the log does not "
               "have",
               numberText(info.newest));
        return;
    }
    if (info.oldest < 1 || info.oldest > info.sa.Size || (!circular && info.oldest != 1)) {
        damage(log, INFO_PLACE(oldest),
               "the oldest entry is said to be {}, which the log does not "
               "have",
               numberText(info.oldest));
        return;
    }
    if (info.maxUsed != top) {
        damage(log, INFO_PLACE(maxUsed),
               "the highest number used is said to be {}, but by the ends of the log it is {}",
               info.maxUsed, top);
    }
    const std::uint32_t count =
        wrapped ? info.sa.Size - info.oldest + 1 + info.newest : info.newest - info.oldest + 1;
    checkCount(log, count);
    checkRingTimes(log, count, top);
}

[[nodiscard]] bool isShortOfALog(const LogFile &file, CheckedLog &log) {
    const off_t size = log.status.st_size;
    if (size >= eventlog::entriesOffset &&
        file.read(eventlog::infoOffset, &log.info, sizeof log.info)) {
        return false;
    }
    damage(log, {size, {}}, "the file ends here, {} bytes before the end of an empty log",
           eventlog::entriesOffset - size);
    if (size < eventlog::infoSize) {
        notice(log, {0, {}},
               "a crash while the log was made leaves such a file; every start stops at it, until "
               "\"rm {}\" lets the next one make the log anew",
               shown(file.path()));
    }
    return true;
}

// ---- Logs that are being written ----------------------------------------------------------------

constexpr auto pauseBetween = std::chrono::milliseconds{50};
constexpr auto quietTime = std::chrono::milliseconds{1000}; // a write to a busy disk takes a while
constexpr auto longestEffort = std::chrono::milliseconds{5000};
constexpr std::time_t justNow = 2; // seconds

[[nodiscard]] bool sameFile(const struct stat &a, const struct stat &b) {
    return a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

[[nodiscard]] bool wasJustChanged(const struct stat &status) {
    return std::time(nullptr) - status.st_mtim.tv_sec <= justNow;
}

[[nodiscard]] bool isSound(const CheckedLog &log) {
    return log.findings.damages + log.findings.notices == 0;
}

} // namespace

void checkLog(const LogFile &file, CheckedLog &log) {
    log.status = file.status();
    if (isShortOfALog(file, log)) {
        return;
    }
    log.readable = true;
    checkSettings(log);
    checkWaitingUpdate(file, log);
    log.records = countRecords(log);
    checkLength(log);
    if (log.info.maxUsed > log.info.sa.Size) {
        damage(log, INFO_PLACE(maxUsed), "the highest number used is {}, but the log's Size is {}",
               log.info.maxUsed, log.info.sa.Size);
    }
    readRecords(file, log);
    if (eventlog::typeOf(log.info) == LogType::linked) {
        checkLinkedLog(log);
    } else if (isKnown(eventlog::typeOf(log.info))) {
        checkRing(log);
    }
}

CheckedLog checkRestingLog(const LogFile &file, std::size_t mostOfAKind) {
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    struct stat seen {};
    auto seenSince = begin;
    while (true) {
        const auto started = Clock::now();
        CheckedLog log;
        log.findings.mostOfAKind = mostOfAKind;
        checkLog(file, log);
        if (!sameFile(seen, log.status)) {
            seen = log.status;
            seenSince = started;
        }
        const bool changed = !sameFile(log.status, file.status());
        const auto quiet = started - seenSince;
        if (!changed && (isSound(log) || quiet >= quietTime || !wasJustChanged(log.status))) {
            return log;
        }
        if (Clock::now() - begin > longestEffort) {
            fail(Status::systemRefused, "{} changes too fast to be checked; try again in a moment",
                 file.path());
        }
        std::this_thread::sleep_for(changed ? pauseBetween : quietTime - quiet);
    }
}

EventLogEntryRecord recordOf(const LogFile &file, const CheckedLog &log, std::uint32_t number) {
    if (const WaitingRecord *const waiting = waitingFor(log, number)) {
        return waiting->record;
    }
    EventLogEntryRecord record{};
    if (!file.read(eventlog::entryOffset(number), &record, sizeof record)) {
        fail(Status::systemRefused, "{} was cut while it was read; try again in a moment",
             file.path());
    }
    return record;
}

StartObstacle startObstacle(const std::string &path) {
    try {
        const LogFile file(path);
        CheckedLog log;
        if (!file.read(eventlog::infoOffset, &log.info, sizeof log.info)) {
            return StartObstacle::cutWhileMade;
        }
        if (log.info.updating == 0) {
            return StartObstacle::none;
        }
        return readWaitingUpdate(file, log) ? StartObstacle::waitingUpdate : StartObstacle::damage;
    } catch (const Failure &) {
        return StartObstacle::none;
    }
}

} // namespace zusahpi::evtlogctl
