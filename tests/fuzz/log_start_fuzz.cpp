// A log started on any file: the file is refused, or becomes a log that can be worked on, whatever
// its numbers say.
//
// The input is the log file. Bytes of it that mean nothing choose what happens: the reserved one of
// the info record says how the configuration differs from the file, the reserved ones of the
// records which operations follow, and on which entries.

#include "eventlog/log_format.h"
#include "eventlog/store_state.h"
#include "tests/fuzz/harness.h"
#include "tests/fuzz/running_log.h"

namespace {

using fuzz::Bytes;
using namespace zusahpi;

constexpr std::size_t mostBytes = 65536; // of a file that are compared
constexpr std::size_t bytesOfOperations = 4;

[[nodiscard]] std::uint8_t byteAt(Bytes file, std::size_t offset) {
    return offset < file.size() ? file[offset] : std::uint8_t{0};
}

// What the configuration changes.
enum Differs : unsigned {
    type = 1U,
    greater = 2U,
    smaller = 4U,
    overflow = 8U,
    reinitialised = 16U,
    relative = 32U,
    anySize = 64U,
    disabled = 128U,
};

[[nodiscard]] EventLogControlBlock configurationFor(Bytes file) {
    Bytes front = file;
    const auto info = fuzz::takeValue<EventLogInfoRecord>(front);
    const unsigned differs = byteAt(file, offsetof(EventLogInfoRecord, reserved));
    const std::uint32_t given = info.type % fuzz::logTypes;
    const std::uint32_t size = info.sa.Size + ((differs & Differs::greater) != 0 ? 2 : 0) -
                               ((differs & Differs::smaller) != 0 ? 3 : 0);
    EventLogControlBlock block =
        fuzz::controlBlock((differs & Differs::type) != 0 ? (given + 1) % fuzz::logTypes : given,
                           info.overflowAction, (differs & Differs::anySize) != 0 ? 3 : size);
    if ((differs & Differs::overflow) != 0) {
        block.info.overflowAction = (info.overflowAction + 1) % fuzz::overflowActions;
    }
    block.reinitialize = (differs & Differs::reinitialised) != 0 ? 1 : 0;
    block.relativeTime = (differs & Differs::relative) != 0 ? 1 : 0;
    block.info.sa.Enabled = (differs & Differs::disabled) != 0 ? SAHPI_FALSE : SAHPI_TRUE;
    return block;
}

void requireSoundFile() {
    EventLogInfoRecord info{};
    fuzz::require(fuzz::readLogFile(&info, sizeof info) == sizeof info, "there is an info record");
    fuzz::require(info.updating == 0, "no update waits after a start");
    fuzz::require(std::memcmp(&info, &eventlog::store.info, sizeof info) == 0,
                  "file and memory agree after a start");
    fuzz::require(fuzz::logFileSize() == eventlog::fileSize(info.maxUsed),
                  "the file ends after its last record");
}

// An entry id: the ends, the numbers of the log, one that is none.
[[nodiscard]] SaHpiEventLogEntryIdT entryOf(unsigned choice) {
    const EventLogInfoRecord &info = eventlog::store.info;
    const SaHpiEventLogEntryIdT ids[] = {
        SAHPI_OLDEST_ENTRY, SAHPI_NEWEST_ENTRY,    1,           2, info.maxUsed,
        info.freeHead,      SAHPI_NO_MORE_ENTRIES, info.sa.Size};
    return ids[choice % std::size(ids)];
}

void addEvent(std::uint8_t seed) {
    EventLogAddRecord record;
    std::memset(&record, seed, sizeof record);
    record.event.EventType = (seed & 1U) != 0 ? SAHPI_ET_USER : SAHPI_ET_OEM;
    (void)zuSaHpiEventLogEntryAdd(&record, seed & 2U); // any result will do
}

void walk(SaHpiEventLogEntryIdT from, bool forward) {
    EventLogEntryRecord record;
    for (int steps = 0; steps < 8 && zuSaHpiEventLogEntryGet(from, &record) == SA_OK; ++steps) {
        from = forward ? record.next : record.prev;
    }
}

// Any result is allowed: the log may hold anything.
void operate(std::uint8_t choice) {
    const unsigned what = choice >> 3U;
    switch (choice & 7U) {
    case 0:
    case 1:
        return addEvent(static_cast<std::uint8_t>(what));
    case 2:
    case 3:
        (void)zuSaHpiEventLogEntryDel(entryOf(what), 0);
        return;
    case 4:
        return walk(entryOf(what), (what & 16U) != 0);
    case 5:
        (void)zuSaHpiEventLogResetOverflow();
        return;
    case 6:
        (void)zuSaHpiEventLogTimeSet(static_cast<SaHpiTimeT>(what) << 40U);
        return;
    default:
        (void)(what == 0 ? zuSaHpiEventLogClear() : zuSaHpiEventLogStateSet(what & 1U));
        return;
    }
}

void operateAsTold(Bytes file) {
    constexpr std::size_t first = offsetof(EventLogEntryRecord, reserved);
    for (std::uint32_t slot = 0; slot < eventlog::transactionSlots; ++slot) {
        for (std::size_t i = 0; i < bytesOfOperations; ++i) {
            const auto offset = static_cast<std::size_t>(eventlog::slotOffset(slot)) + first + i;
            operate(byteAt(file, offset));
            fuzz::requireIdle();
        }
    }
}

// A start changes nothing that the start before has already put right. The log then runs.
void requireSameAfterStart(const EventLogControlBlock &block) {
    static std::uint8_t before[mostBytes];
    static std::uint8_t after[mostBytes];
    const std::int64_t size = fuzz::logFileSize();
    const std::size_t count = fuzz::readLogFile(before, mostBytes);
    fuzz::require(fuzz::startLog(block), "what was started can be started again");
    fuzz::require(fuzz::logFileSize() == size, "a second start leaves the length alone");
    fuzz::require(fuzz::readLogFile(after, mostBytes) == count &&
                      std::memcmp(before, after, count) == 0,
                  "a second start leaves the file alone");
}

// Whatever was done to a log, the next start takes it up: it finishes what waits in the file.
void requireStartable(EventLogControlBlock block) {
    block.reinitialize = 0; // which would not look at what waits
    fuzz::stopLog();
    fuzz::require(fuzz::startLog(block), "a log that was worked on can be started again");
    requireSoundFile();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const Bytes file(data, size);
    const EventLogControlBlock block = configurationFor(file);
    fuzz::putLogFile(file);
    if (fuzz::startLog(block)) {
        requireSoundFile();
        fuzz::stopLog();
        requireSameAfterStart(block);
        operateAsTold(file);
        requireStartable(block);
    }
    fuzz::discardLog();
    return 0;
}
