// One log after another in one process: for tests that start the store on a hundred thousand files.
//
// A session begins with the store's state all zero, as a fresh process has it, and ends as the end
// of a process does: the file closed, the lock removed. That this makes no difference to a process
// of its own is tested (linked_crash_test.cpp).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/eventlog/store_fixture.h"
#include "zuSaHpi_util.h"

namespace crash_test {

// Of the log file.
inline constexpr std::size_t recordLength = 1496;
inline constexpr std::size_t entriesStart = 6064;

// The log and its lock, in a scratch folder in memory where the machine has one: it is written
// synchronously some hundred thousand times, and no test here pulls the plug.
const std::string &rootFolder();
const std::string &logPath();
const std::string &lockPath();

// Removes log and lock, whatever is there.
void removeLog();

// Starts the store on what is there, as a process does that starts it once.
void startLog(const EventLogControlBlock &block);

// The same, to be followed by endSession and by more sessions. A start that ends the process prints
// `sessionName` first.
void beginSession(const EventLogControlBlock &block);
void endSession();
extern std::string sessionName;

// What a log is to those who use it and to those who read its file. The transaction log area is no
// part of a comparison: it means nothing in a log that is up.
struct LogState {
    std::string file;
    SaHpiEventLogInfoT reported{};              // zuSaHpiEventLogInfoGet
    SaHpiBoolT enabled = 0;                     // zuSaHpiEventLogStateGet
    std::vector<EventLogEntryRecord> entries;   // from oldest by next
    std::vector<EventLogEntryRecord> backwards; // from newest by prev
    std::string messages;                       // what the start printed
};

bool operator==(const LogState &a, const LogState &b);

// Where the first difference lies, for people.
std::string difference(const LogState &a, const LogState &b);

// Of the running session.
LogState logState();

std::string_view infoOf(const LogState &state);    // the 80 bytes
std::string_view recordsOf(const LogState &state); // all from offset 6064 on

// Starts the store on these bytes and ends it again.
LogState stateAfterStart(const EventLogControlBlock &block, const std::string &bytes);

// The clock at which the record of `seed` is added, when a test adds it.
SaHpiTimeT timeOf(std::uint8_t seed);

// Adds store_test::event(seed) at timeOf(seed). Returns the result.
SaErrorT addEvent(std::uint8_t seed);

// Empty when the entries are exactly those that addEvent(seed) made, byte for byte; else what is
// not.
std::string unlikeSeeds(const LogState &state, const std::vector<int> &seeds);

// How much a test shall do: true when the environment holds ZUSAHPI_LONG_TESTS=1.
bool longTests();

} // namespace crash_test
