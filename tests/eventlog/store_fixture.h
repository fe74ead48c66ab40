// What the store's tests share: an installation root of their own, control blocks, events whose
// every byte is known, and a look into the log file that shares no code with the store.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/faults.h"
#include "tests/support/files.h"
#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace store_test {

inline constexpr std::uint32_t none = 0xFFFFFFFF;
inline constexpr std::uint32_t simple = 0;
inline constexpr std::uint32_t circular = 1;
inline constexpr std::uint32_t linked = 2;
inline constexpr std::uint32_t drop = 0;
inline constexpr std::uint32_t wrap = 1;
inline constexpr std::uint32_t writeLast = 2;

// A block as configuration makes it, for a log named "log".
EventLogControlBlock controlBlock(std::uint32_t type, std::uint32_t overflowAction,
                                  std::uint32_t size);

// A user event with its RPT entry and RDR; every byte depends on `seed`.
EventLogAddRecord event(std::uint8_t seed);

// A user event of `length` bytes, without RPT entry and RDR.
EventLogAddRecord userEvent(std::uint8_t length);

// An entry record of a Linked log made of event(seed).
EventLogEntryRecord entryRecord(std::uint32_t id, std::uint8_t seed, std::uint32_t prev = none,
                                std::uint32_t next = none);

// A log file, taken apart by the offsets of the format.
struct FileImage {
    std::string bytes;

    [[nodiscard]] std::uint32_t u32(std::size_t offset) const;
    [[nodiscard]] std::int64_t i64(std::size_t offset) const;
    [[nodiscard]] std::uint8_t u8(std::size_t offset) const;

    [[nodiscard]] std::uint32_t entries() const;
    [[nodiscard]] std::uint32_t oldest() const;
    [[nodiscard]] std::uint32_t newest() const;
    [[nodiscard]] std::uint32_t freeHead() const;
    [[nodiscard]] std::uint32_t maxUsed() const;
    [[nodiscard]] std::uint32_t updating() const;
    [[nodiscard]] std::uint8_t overflowFlag() const;
    [[nodiscard]] EventLogEntryRecord entry(std::uint32_t number) const;
    [[nodiscard]] EventLogEntryRecord slot(std::uint32_t number) const;
    [[nodiscard]] EventLogInfoRecord info() const;
    void setInfo(const EventLogInfoRecord &info);
    void setEntry(const EventLogEntryRecord &record);
    void setEntry(std::uint32_t number, const EventLogEntryRecord &record); // whatever it bears
    void setSlot(std::uint32_t number, const EventLogEntryRecord &record);
};

class StoreTest : public testing::Test {
  protected:
    StoreTest();

    static std::string logPath();
    static std::string lockPath();
    static FileImage file();
    static void writeLog(const FileImage &image);

    // Starts the log in this process.
    static void start(std::uint32_t type, std::uint32_t overflowAction, std::uint32_t size);
    static void start(const EventLogControlBlock &block);

    // Adds event(seed), which must succeed.
    static void add(std::uint8_t seed);

    // The seeds of the entries from the oldest to the newest, by following the links that
    // zuSaHpiEventLogEntryGet returns.
    static std::vector<int> seeds();

    // Diagnostics since the last call: in one piece, or as they were printed.
    static std::string diagnostics();
    using Prints = std::vector<std::string>;
    static Prints diagnosticPrints();
};

bool equalBytes(const void *a, const void *b, std::size_t size);

} // namespace store_test
