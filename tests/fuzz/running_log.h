// A log of the process that can be started and stopped again and again, on a file in a scratch
// folder that goes with the process.
#pragma once

#include "tests/fuzz/harness.h"

namespace fuzz {

inline constexpr std::uint32_t logTypes = 3;
inline constexpr std::uint32_t overflowActions = 3;

// Of an empty log.
[[nodiscard]] EventLogControlBlock controlBlock(std::uint32_t type, std::uint32_t overflowAction,
                                                std::uint32_t size);

// A log of `size` entries whose type and overflow action come from the byte.
[[nodiscard]] EventLogControlBlock controlBlock(std::uint8_t choice, std::uint32_t size);

// Makes the log file hold just these bytes.
void putLogFile(Bytes contents);

// Where the log file is, and where another one can be made beside it. Not before putLogFile.
[[nodiscard]] const char *logPath();
[[nodiscard]] const char *salvagePath();

void removeSalvage();

// How long the log file is, -1 when there is none.
[[nodiscard]] std::int64_t logFileSize();

// Up to `size` bytes of the log file. Returns how many there are.
[[nodiscard]] std::size_t readLogFile(void *bytes, std::size_t size);

// Starts the log. False when the library refuses, and then it is stopped already.
[[nodiscard]] bool startLog(const EventLogControlBlock &block);

// As the end of the process does it. The file stays.
void stopLog();

// Stops the log if it runs and removes its file.
void discardLog();

// That no operation is left half done in the store.
void requireIdle();

} // namespace fuzz
