// A main library for tests. Output to the handle of a string is appended to that string; what goes
// to standard error is kept in `diagnostics` and also written there. The clocks stand still until
// a test moves them, so that every byte of a log file is known beforehand.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "zuSaHpi_mainlib.h"

namespace test_mainlib {

struct State {
    SaHpiTimeT timeOfDay = 1'000'000'000;
    SaHpiTimeT timeRef = 0;
    std::string diagnostics;
    std::vector<std::string> diagnosticPrints;       // the same, a text for each print
    std::vector<std::pair<int, std::string>> syslog; // priority and text of each line
    int printCalls = 0;
};

State &state();

// The handle under which printers append to `text`.
zuSaHpiHandleT handleOf(std::string &text);

} // namespace test_mainlib
