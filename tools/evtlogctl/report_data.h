// The data of the report's page.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "tools/evtlogctl/log_reader.h"

namespace zusahpi::evtlogctl {

using Sink = std::function<void(std::string_view)>;

// Gives `to` the data of a log piece by piece, as JSON without the character '<', so that nothing
// in them can end the element of the page that holds them. All entries are counted; the newest
// `newest` are there one by one. Returns what reportReading says of the log.
[[nodiscard]] Status writeReportData(const LogFile &file, const Snapshot &snapshot,
                                     std::size_t newest, const Sink &to);

} // namespace zusahpi::evtlogctl
