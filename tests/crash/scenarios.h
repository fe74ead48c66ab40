// The operations that a crash may cut short, each with the log that it is done to and with the
// entries, by seed, before and after it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/crash/session.h"
#include "tests/support/file_journal.h"

namespace crash_test {

struct Scenario {
    std::string name;
    EventLogControlBlock block;      // of the log
    std::function<void()> prepare;   // done to the new log
    std::function<void()> operation; // the one that is cut short; null: a start with `restart`
    EventLogControlBlock restart;
    std::vector<int> before;
    std::vector<int> after;
};

// What an operation did to the file.
struct Recording {
    std::string before;
    std::string after;
    std::vector<test_support::FileEvent> events;
    bool synchronous = false; // each write is on the disk before the next begins
};

// Carries the scenario out from the beginning.
Recording record(const Scenario &scenario);

// The changes that one start of the log makes to these bytes.
Recording recordStart(const EventLogControlBlock &block, const std::string &bytes);

// Every operation on a Linked log, under each overflow action.
std::vector<Scenario> linkedScenarios();

// Every operation on logs of a type without crash protection.
std::vector<Scenario> simpleScenarios();
std::vector<Scenario> circularScenarios();

// A Linked log of up to 12 entries after a random past, and a random operation on it.
Scenario randomScenario(std::uint32_t seed);

} // namespace crash_test
