// Saving what can be read of a log to a new, sound log of the same type and settings.
//
// Order of the entries, oldest first:
//   1. those that the log's own order leads to: from the oldest entry on as far as the chain is
//      whole, or all of the ring;
//   2. entries that nothing leads to, by the time of their logging, then by number;
//   3. in a broken chain those from the newest entry back.
// RPT entry, RDR, event and time of logging stay byte for byte; numbers and links are new.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/evtlogctl/log_check.h"

namespace zusahpi::evtlogctl {

// The numbers of the entries to save, in their order.
[[nodiscard]] std::vector<std::uint32_t> salvageable(const CheckedLog &log);

// Writes them to the file `to`, which must not exist. It gets its name when all of it is on the
// disk. Throws Failure; nothing is left behind then.
void writeSalvage(const LogFile &from, const CheckedLog &log,
                  const std::vector<std::uint32_t> &numbers, const std::string &to);

} // namespace zusahpi::evtlogctl
