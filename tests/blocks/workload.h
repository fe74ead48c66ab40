// What a log goes through while the writes of its disk are logged, and what it is after each step.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/model/store_check.h"

namespace block_test {

struct Step {
    store_model::Operation operation;
    bool dies = false;  // the process, at the first record that it writes in place; a start follows
    bool syncs = false; // the whole system, afterwards
};

struct Script {
    store_model::Settings settings;
    std::vector<Step> steps;
};

// Adds until the log is full and beyond, then operations of every kind that leaves the log a file
// of its type: among them clears, starts with the same and with other settings, and processes that
// die in a commit.
Script scriptOf(const store_model::Settings &settings, std::uint32_t seed, std::uint32_t steps);

// Does the step to the log and to its model. Returns what differs afterwards, or why it failed.
std::string carryOut(store_model::Pair &pair, const Step &step);

// What a log is between two operations.
struct Moment {
    store_model::Model model;
    std::string file;
};

struct History {
    std::vector<Moment> moments; // after the creation of the file and then after each step
    // The latest moment that must be on the disk as a whole when this one was acknowledged.
    std::vector<std::size_t> durable;
};

// Carries the script out in memory. Throws std::runtime_error when store and model differ.
History historyOf(const Script &script);

std::string nameOf(const Step &step);

} // namespace block_test
