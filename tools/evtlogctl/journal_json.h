// Entries in the JSON form of the systemd journal, for programs that read that.
#pragma once

#include <string>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// Appends an object, without a newline. As in the journal every value is a string:
//
//   __CURSOR               a cursor of `list`
//   __REALTIME_TIMESTAMP   microseconds since 1970; of an event without a time of day when it was
//                          logged
//   PRIORITY               the level of syslog that the severity has without a configuration
//   SYSLOG_IDENTIFIER      the source as `list` shows it
//   MESSAGE                what happened, as `list` shows it
//   HPI_ENTRY_ID, HPI_SEVERITY, HPI_EVENT_TYPE, HPI_SOURCE   numbers of the HPI standard
void appendJournalJson(std::string &text, const EventLogEntryRecord &entry);

} // namespace zusahpi::evtlogctl
