// The system calls on the open log file. Every access of the store to it is one of these, so that
// each can be made to fail by itself.
#pragma once

#include <cstddef>
#include <span>

#include <sys/types.h>

#include "eventlog/log_format.h"

namespace zusahpi::eventlog {

// Moves to an offset. False: errno says why.
[[nodiscard]] bool seekTo(off_t offset);

// Reads at the position. Returns the number of bytes, less than asked for at the file's end, -1 on
// failure.
[[nodiscard]] ssize_t readNext(std::span<std::byte> bytes);

// Writes at the position. Returns the number of bytes that went out, -1 on failure.
[[nodiscard]] ssize_t writeNext(std::span<const std::byte> bytes);

// Writes all bytes at the position: a write that stops short is continued, so that what stopped it
// comes to light. False: errno says why.
[[nodiscard]] bool writeWhole(std::span<const std::byte> bytes);

// Cuts or extends the file so that it ends after entry `maxUsed`. False: errno says why.
[[nodiscard]] bool truncateAfter(std::uint32_t maxUsed);

[[nodiscard]] inline std::span<const std::byte> bytesOf(const EventLogInfoRecord &info) {
    return std::as_bytes(std::span(&info, 1));
}

[[nodiscard]] inline std::span<const std::byte> bytesOf(const EventLogEntryRecord &record) {
    return std::as_bytes(std::span(&record, 1));
}

} // namespace zusahpi::eventlog
