// An entry of a log as one line of JSON.
#pragma once

#include <string>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// Appends an object, without a newline. Its keys are the names of the HPI standard:
//
//   numbers     as they are; beside a constant X stands XName, its name in the standard or null
//   masks       as numbers; beside a mask X stands XNames, the names of its bits
//   times       in nanoseconds; beside a time X stands XTime, as RFC 3339 or null where it is no
//               time of day
//   texts       objects: Text, where every byte that belongs to no UTF-8 character is U+FFFD (null
//               where the bytes are no text in ASCII), and Data, the very bytes in hexadecimal
//   parts that the entry does not have are null
void appendEntryJson(std::string &text, const EventLogEntryRecord &entry);

} // namespace zusahpi::evtlogctl
