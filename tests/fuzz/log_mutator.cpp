// How inputs that are log files are varied. Most bytes of such a file are texts and padding, so
// that blind changes seldom reach a field that decides anything. Half of the changes are therefore
// made to a field: a number of the info record, or of the head of a slot or an entry. The rest are
// the fuzzer's own.

#include <array>

#include "eventlog/log_format.h"
#include "tests/fuzz/harness.h"

extern "C" {
std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t maxSize);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                    unsigned seed);
}

namespace fuzz {
namespace {

using namespace zusahpi::eventlog;

struct Field {
    std::size_t offset;
    std::size_t width;
};

constexpr std::array infoFields = {
    Field{offsetof(EventLogInfoRecord, sa.Entries), 4},
    Field{offsetof(EventLogInfoRecord, sa.Size), 4},
    Field{offsetof(EventLogInfoRecord, sa.UserEventMaxSize), 4},
    Field{offsetof(EventLogInfoRecord, sa.UpdateTimestamp), 8},
    Field{offsetof(EventLogInfoRecord, sa.Enabled), 1},
    Field{offsetof(EventLogInfoRecord, sa.OverflowFlag), 1},
    Field{offsetof(EventLogInfoRecord, sa.OverflowResetable), 1},
    Field{offsetof(EventLogInfoRecord, sa.OverflowAction), 4},
    Field{offsetof(EventLogInfoRecord, type), 4},
    Field{offsetof(EventLogInfoRecord, overflowAction), 4},
    Field{offsetof(EventLogInfoRecord, oldest), 4},
    Field{offsetof(EventLogInfoRecord, newest), 4},
    Field{offsetof(EventLogInfoRecord, freeHead), 4},
    Field{offsetof(EventLogInfoRecord, maxUsed), 4},
    Field{offsetof(EventLogInfoRecord, timeOffset), 8},
    Field{offsetof(EventLogInfoRecord, updating), 4},
    Field{offsetof(EventLogInfoRecord, reserved), 4},
};

// The bytes of the event's own data, of the RPT entry and of the RDR are single bytes here: what
// they mean depends on others.
constexpr std::array recordFields = {
    Field{offsetof(EventLogEntryRecord, deleted), 4},
    Field{offsetof(EventLogEntryRecord, prev), 4},
    Field{offsetof(EventLogEntryRecord, next), 4},
    Field{offsetof(EventLogEntryRecord, reserved), 4},
    Field{offsetof(EventLogEntryRecord, entry.EntryId), 4},
    Field{offsetof(EventLogEntryRecord, entry.Timestamp), 8},
    Field{offsetof(EventLogEntryRecord, entry.Event.Source), 4},
    Field{offsetof(EventLogEntryRecord, entry.Event.EventType), 4},
    Field{offsetof(EventLogEntryRecord, entry.Event.Timestamp), 8},
    Field{offsetof(EventLogEntryRecord, entry.Event.Severity), 4},
    Field{offsetof(EventLogEntryRecord, rpt.ResourceCapabilities), 4},
    Field{offsetof(EventLogEntryRecord, rdr.RdrType), 4},
};

constexpr std::array<std::uint64_t, 12> telling = {
    0, 1, 2, 3, 4, 5, 8, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF, 0x7FFFFFFFFFFFFFFF};

// A row of numbers from the fuzzer's seed, so that a run can be repeated.
struct Dice {
    std::uint64_t state;
};

[[nodiscard]] std::size_t roll(Dice &dice, std::size_t sides) {
    dice.state = dice.state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::size_t>(dice.state >> 33U) % sides;
}

[[nodiscard]] std::size_t records(std::size_t size) {
    constexpr auto first = static_cast<std::size_t>(transactionLogOffset);
    constexpr auto each = static_cast<std::size_t>(entrySize);
    return size < first ? 0 : (size - first) / each;
}

[[nodiscard]] std::size_t recordOffset(std::size_t record) {
    return static_cast<std::size_t>(slotOffset(static_cast<std::uint32_t>(record)));
}

[[nodiscard]] Field chooseField(Dice &dice, std::size_t size) {
    const std::size_t count = records(size);
    if (count == 0 || roll(dice, 2) == 0) {
        return infoFields[roll(dice, infoFields.size())];
    }
    const std::size_t base = recordOffset(roll(dice, count));
    if (roll(dice, 3) == 0) { // anywhere in what the printers take apart
        return {base + roll(dice, sizeof(EventLogEntryRecord)), 1};
    }
    const Field field = recordFields[roll(dice, recordFields.size())];
    return {base + field.offset, field.width};
}

void changeField(Dice &dice, std::uint8_t *data, std::size_t size) {
    const Field field = chooseField(dice, size);
    if (field.offset + field.width > size) {
        return;
    }
    std::uint64_t value = 0;
    std::memcpy(&value, data + field.offset, field.width);
    switch (roll(dice, 4)) {
    case 0:
        value ^= std::uint64_t{1} << roll(dice, 8 * field.width);
        break;
    case 1:
        value += roll(dice, 2) == 0 ? 1 : ~std::uint64_t{0};
        break;
    default:
        value = telling[roll(dice, telling.size())];
        break;
    }
    std::memcpy(data + field.offset, &value, field.width);
}

// Copies a record over another, from a slot to an entry too, or adds it at the end.
[[nodiscard]] std::size_t copyRecord(Dice &dice, std::uint8_t *data, std::size_t size,
                                     std::size_t maxSize) {
    const std::size_t count = records(size);
    const std::size_t target = recordOffset(roll(dice, count + 1));
    if (count == 0 || target + sizeof(EventLogEntryRecord) > maxSize) {
        return size;
    }
    const std::size_t source = recordOffset(roll(dice, count));
    std::memmove(data + target, data + source, sizeof(EventLogEntryRecord));
    const std::size_t end = target + sizeof(EventLogEntryRecord);
    return end > size ? end : size;
}

} // namespace
} // namespace fuzz

std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t maxSize,
                                    unsigned seed) {
    using namespace fuzz;
    Dice dice{seed};
    if (size == 0 || roll(dice, 2) == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    for (std::size_t changes = 1 + roll(dice, 4); changes > 0; --changes) {
        changeField(dice, data, size);
    }
    if (roll(dice, 8) == 0) {
        return copyRecord(dice, data, size, maxSize);
    }
    return roll(dice, 32) == 0 ? 1 + roll(dice, size) : size; // a file that was cut short
}
