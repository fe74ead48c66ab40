// What is done with an engine, and which part of it is timed.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "bench/engine.h"

namespace bench {

struct Task {
    const Engine *engine;
    Setup setup;
    std::uint32_t count; // operations that are timed
};

// Does a workload and returns the nanoseconds that its timed part took; nothing for a name that is
// none.
//
//   grow    adds to a store that has room
//   wrap    adds to a full store, which was filled before
//   fill    makes a store of `count` records
//   newest  reads the newest record again and again
//   scan    reads the records of a full store from the oldest on, beginning again at the end
//   random  reads records of a full store, in an order that is the same for all engines
//   start   opens the store, once
//   delete  deletes the newest entry, of the event log alone
//   clear   empties the store, once, of the event log alone
std::optional<std::int64_t> run(std::string_view workload, const Task &task);

} // namespace bench
