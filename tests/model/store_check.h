// Lets the store and the model do the same and says where they differ: results and printed lines,
// every entry with its neighbours, the info, the bytes of the file.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "eventlog/store_state.h"
#include "tests/model/memory_disk.h"
#include "tests/model/store_model.h"

namespace store_model {

// A log and its model side by side.
struct Pair {
    std::string path; // of the log file
    Model model;
};

// Starts a new log at the path, in a process that is fresh as far as the store can tell, and the
// model with it. `difference` says what differs, empty for nothing.
Pair startPair(const std::string &path, const Settings &settings, std::string &difference);

// Lets some time pass for both.
void tick(Pair &pair);

// Does the operation to both. Returns what differs in their answers.
std::string step(Pair &pair, const Operation &operation);

// Looks at everything that can be read. Returns what differs.
std::string compare(const Pair &pair);

// The same, leaving no trace in the store's caches.
std::string compareUnseen(const Pair &pair);

// A moment of a log in the memory disk, to be gone back to.
struct Moment {
    zusahpi::eventlog::StoreState store;
    memory_disk::Machine machine;
    Pair pair;
};

Moment remember(const Pair &pair);
void goBackTo(const Moment &moment, Pair &pair);

// Whether nothing at all has changed since.
bool isStill(const Moment &moment, const Pair &pair);

// Runs a whole sequence on a new log, looking after each step. The looks leave no trace in the
// store's caches when `unseen`. Returns what differs, with the operations that led there.
std::string runSequence(const std::string &path, const Settings &settings,
                        std::span<const std::uint32_t> row, bool unseen);

// Lets the store's diagnostics out into the test's record of them alone: they are too many for a
// terminal. The sanitizers keep theirs.
void keepDiagnosticsOffTheTerminal();

} // namespace store_model
