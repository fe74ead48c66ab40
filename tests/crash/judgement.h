// Starting the store on crash images and holding what it shows against what it showed before and
// after the operation that was cut short.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include "tests/crash/crash_image.h"
#include "tests/crash/scenarios.h"

namespace crash_test {

// The clock at which the store is started on an image.
inline constexpr SaHpiTimeT timeOfRestart = 3'000'000'000;

// What a log may be after the crash, as a start with `block` shows it.
struct Expectation {
    EventLogControlBlock block;
    LogState before;
    LogState after;
};

// The blocks that a log may be started with after the scenario's operation: its own and, when the
// operation is a start, the one it had earlier.
std::vector<Expectation> expectationsOf(const Scenario &scenario, const Recording &recording);

struct Tally {
    std::size_t starts = 0;                   // of the store on an image
    std::unordered_set<std::size_t> distinct; // hashes of the images
    std::vector<std::string> complaints;

    void complain(const std::string &scenario, const CrashImage &image, const std::string &what);
};

// Fails the running test for each complaint, the first ones in full.
void report(const Tally &tally);

enum class Side { before, after, both, neither };

// Starts the store on the image, and once more on what that start left: the file must be sound and
// the second start must change nothing. Returns which of the two states it shows.
Side judge(const Expectation &expectation, const CrashImage &image, const std::string &name,
           Tally &tally);

// Follows the images of one operation in order: once an image with whole events only shows the
// state after it, all later ones must; the first shows the state before, the last the one after.
// This is stricter than "one of the two": it says that the operation has one moment at which it
// takes effect, and that it has when the call returns.
struct Progress {
    bool mustBeAfter = false;      // from now on
    bool nextWholeIsAfter = false; // an image with part of the next event shows it already
};

// Empty when the image fits; else what is wrong.
std::string advance(Progress &progress, const CrashImage &image, std::size_t events, Side side);

} // namespace crash_test
