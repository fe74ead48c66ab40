// Holding the log that a file system has after a power failure against the moments that it may
// show.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tests/blocks/workload.h"

namespace block_test {

enum class Verdict {
    held,    // it is the log of one moment that it may be
    mixed,   // an unsynced log: each sector is that of such a moment, but not all of the same one
    refused, // no log yet, only a part of a new file; the start says so and ends
    failed
};

struct Judgement {
    Verdict verdict = Verdict::failed;
    std::string text; // why it failed
};

// Removes the lock and starts the store on the log file, in a process of its own. The log may be
// that of any of these moments; there are none while its file is being made.
Judgement judgeImage(const std::string &path, const store_model::Settings &settings,
                     std::span<const Moment> possible);

} // namespace block_test
