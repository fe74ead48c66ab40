// The format of the log file: offsets, sizes and codes. The records themselves stand in the public
// header, with the assertions of their offsets.
//
//   offset 0      info record, 80 bytes
//   offset 80     transaction log area: 4 slots of one entry record each
//   offset 6064   entry records; entry number n (from 1) is the n-th
//
// All integers are little-endian, as the records lie in memory. There is no magic number: a log
// file is known by its name.
#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

#include <sys/types.h>

#include "zuSaHpi_util.h"

namespace zusahpi::eventlog {

inline constexpr std::uint32_t noEntry = ZUSAHPI_EL_NO_ENTRY;

inline constexpr off_t infoOffset = 0;
inline constexpr off_t infoSize = sizeof(EventLogInfoRecord);
inline constexpr off_t entrySize = sizeof(EventLogEntryRecord);

inline constexpr std::uint32_t transactionSlots = 4;
inline constexpr off_t transactionLogOffset = infoOffset + infoSize;
inline constexpr off_t entriesOffset = transactionLogOffset + transactionSlots * entrySize;

[[nodiscard]] constexpr off_t slotOffset(std::uint32_t slot) {
    return transactionLogOffset + static_cast<off_t>(slot) * entrySize;
}

// Of entry number 1 and up.
[[nodiscard]] constexpr off_t entryOffset(std::uint32_t number) {
    return entriesOffset + (static_cast<off_t>(number) - 1) * entrySize;
}

// The length of a log file in which `maxUsed` is the highest entry number.
[[nodiscard]] constexpr off_t fileSize(std::uint32_t maxUsed) {
    return entriesOffset + static_cast<off_t>(maxUsed) * entrySize;
}

// EventLogInfoRecord.type; a file may hold any other value.
enum class LogType : std::uint32_t {
    simple = ZUSAHPI_EL_TYPE_SIMPLE,
    circular = ZUSAHPI_EL_TYPE_CIRCULAR,
    linked = ZUSAHPI_EL_TYPE_LINKED,
};

// EventLogInfoRecord.overflowAction; a file may hold any other value.
enum class OverflowAction : std::uint32_t {
    drop = ZUSAHPI_EL_DROP,
    wrap = ZUSAHPI_EL_WRAP,
    writeLast = ZUSAHPI_EL_WRITE_LAST,
};

[[nodiscard]] constexpr LogType typeOf(const EventLogInfoRecord &info) {
    return static_cast<LogType>(info.type);
}

[[nodiscard]] constexpr OverflowAction overflowActionOf(const EventLogInfoRecord &info) {
    return static_cast<OverflowAction>(info.overflowAction);
}

static_assert(std::endian::native == std::endian::little,
              "Log files are little-endian: big-endian machines are not supported.");
static_assert(sizeof(off_t) == 8, "a log may grow past 2 GiB");
static_assert(std::is_trivially_copyable_v<EventLogInfoRecord>);
static_assert(std::is_trivially_copyable_v<EventLogEntryRecord>);
static_assert(entriesOffset == 6064);
static_assert(slotOffset(3) == 80 + 3 * 1496);
static_assert(entryOffset(1) == 6064 && entryOffset(2) == 7560);
static_assert(fileSize(7) == 16536);
static_assert(entryOffset(0xFFFFFFFEU) > 0);

} // namespace zusahpi::eventlog
