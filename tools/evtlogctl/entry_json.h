// An entry of a log as one line of JSON.
#pragma once

#include <string>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// Appends an object, without a newline, in the form that json_writer.h says. A text is an object:
// Text, its characters, or null where the bytes are no text in ASCII, and Data, the very bytes in
// hexadecimal. Parts that the entry does not have are null.
void appendEntryJson(std::string &text, const EventLogEntryRecord &entry);

} // namespace zusahpi::evtlogctl
