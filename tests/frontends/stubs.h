// Two functions that the front ends call, each of which can be told to answer otherwise.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "zuSaHpi_mainlib.h"

namespace stubs {

// While it is not SA_OK, zuSaHpiEventLogInfoGet returns it and leaves the record alone.
extern SaErrorT infoFailure;

// What zuSaHpiString2TimeT was called with, and what it shall return from now on.
struct TimeParser {
    std::string text;
    int flags = -1;
    std::optional<std::int64_t> result;
    int errorIndex = 0; // along with a result
};
extern TimeParser timeParser;

} // namespace stubs
