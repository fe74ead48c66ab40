// Those entries of a snapshot that the options of `list` ask for.
#pragma once

#include <cstddef>
#include <optional>

#include "tools/evtlogctl/list_options.h"
#include "tools/evtlogctl/log_reader.h"

namespace zusahpi::evtlogctl {

// How many entries must be read so that the newest `newest` can be chosen.
[[nodiscard]] std::size_t entriesToRead(const ListOptions &options);

// Takes from the snapshot what stands before the place `after`, and, with a number of newest
// entries, all but those. Where the place is not in the log any more, what was logged until then is
// left to the filter. Which of the entries that remain are to be shown says the result.
[[nodiscard]] EntryFilter selectEntries(const LogFile &file, Snapshot &snapshot,
                                        const ListOptions &options);

// The place behind the newest entry of the snapshot; none in an empty log.
[[nodiscard]] std::optional<Cursor> newestCursor(const LogFile &file, const Snapshot &snapshot);

} // namespace zusahpi::evtlogctl
