// Small logs of every type that the store itself writes, with entries of every kind among them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "eventlog/log_format.h"
#include "zuSaHpi_util.h"

// Where a member lies in the file: of the info record, of the entry of this number.
#define INFO(member) offsetof(EventLogInfoRecord, member)
#define IN_ENTRY(number, member)                                                                   \
    (static_cast<std::size_t>(zusahpi::eventlog::entryOffset(number)) +                            \
     offsetof(EventLogEntryRecord, member))

namespace sample_logs {

enum class Kind : std::uint8_t {
    simple,      // entries 1, 2, 3 of 5
    circular,    // Size 3, wrapped: entries 2, 3, 1
    linked,      // Size 10: entries 1, 3, 5; the free list is 4, 2
    interrupted, // the log before, with a sixth entry as number 4 that waits to be put in place
};

inline constexpr Kind allKinds[] = {Kind::simple, Kind::circular, Kind::linked, Kind::interrupted};

[[nodiscard]] const char *nameOf(Kind kind);

// The bytes of the log file.
[[nodiscard]] std::string bytesOf(Kind kind);

// What the store adds as the `serial`-th entry: from 1 on another kind of event each time, with RPT
// entry and RDR from 3 on. Its Source is the serial.
[[nodiscard]] EventLogAddRecord recordOf(std::uint32_t serial);

void startStore(const std::string &path, std::uint32_t type, std::uint32_t size,
                std::uint32_t overflowAction);
void add(std::uint32_t serial);

// Makes the file look as if it was written long ago: findings in one that was just changed are
// waited for, which tests need not do.
void age(const std::string &path);

// Overwrites the bytes of a file at an offset.
template <typename Value>
void put(std::string &bytes, std::size_t offset, Value value) {
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

template <typename Value>
[[nodiscard]] Value get(const std::string &bytes, std::size_t offset) {
    Value value{};
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

} // namespace sample_logs
