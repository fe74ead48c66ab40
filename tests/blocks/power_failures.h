// A log's life on a real file system, and the power failing at every block that the file system
// writes.
#pragma once

#include <cstdint>

#include "tests/blocks/images.h"
#include "tests/blocks/library_calls.h"

namespace block_test {

struct Run {
    FileSystem system;
    store_model::Settings settings;
    std::uint32_t seed = 1;
    std::uint32_t steps = 1;
};

// A mistake of the library can be planted, to see that it is found.
Outcome tryPowerFailures(const Run &run, Defect planted = Defect::none);

} // namespace block_test
