// The event log as a user understands it: a row of entries, each with a number. Written from what
// the store promises; it shares no code with the store and knows nothing of links, transactions or
// caches.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "tests/model/operation.h"

namespace store_model {

struct Entry {
    std::uint32_t number = 0;
    SaHpiTimeT time = 0;
    std::uint32_t argument = 0; // what contentOf makes the entry's content of
    std::uint32_t serial = 0;

    bool operator==(const Entry &) const = default;
};

struct Log {
    Settings settings;
    std::deque<Entry> entries; // oldest first
    bool enabled = true;
    bool overflow = false;
    SaHpiTimeT updated = 0;
    SaHpiTimeT offset = 0;
    std::uint32_t numbersUsed = 0;      // Linked: how many numbers ever were in use
    std::vector<std::uint32_t> toReuse; // Linked: numbers of deleted entries, the next one last
    std::uint32_t recordsInFile = 0;    // how far the file reaches

    bool operator==(const Log &) const = default;
};

struct Model {
    bool withFile = true;
    Log inFile;      // what the log file holds
    Log withoutFile; // what the process holds when it runs without one
    SaHpiTimeT now = 0;
    std::uint32_t serial = 0; // of the last entry stored

    bool operator==(const Model &) const = default;
};

// What an operation answers: its result code, and the lines that it prints.
struct Answer {
    SaErrorT result = SA_OK;
    std::string printed;
};

// The log that operations work on.
Log &logOf(Model &model);
const Log &logOf(const Model &model);

// The first start, which makes the file.
Model firstStart(const Settings &settings, SaHpiTimeT now);

// Does to the model what the operation does to the log.
Answer apply(Model &model, const Operation &operation);

// The highest number whose record counts.
std::uint32_t highestNumber(const Log &log);

} // namespace store_model
