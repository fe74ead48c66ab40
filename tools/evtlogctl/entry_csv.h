// Entries as comma-separated values (RFC 4180, lines end in a newline alone).
#pragma once

#include <string>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// The names of the columns, with a newline.
[[nodiscard]] std::string csvHeader();

// A line without its newline. Texts hold printable ASCII alone, times are RFC 3339 with all nine
// digits, or as `list` shows a time that counts from the start of the controller.
void appendEntryCsv(std::string &text, const EventLogEntryRecord &entry);

} // namespace zusahpi::evtlogctl
