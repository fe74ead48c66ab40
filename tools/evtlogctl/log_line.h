// An entry of a log as one readable line.
#pragma once

#include <string>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// Without a newline, and without any character outside printable ASCII, whatever the entry holds:
//
//   entry id, time of the event, severity, source, what happened
//
// An event without a time shows when it was logged, and the line says so at its end.
void appendLogLine(std::string &text, const EventLogEntryRecord &entry);

// The same as a text of its own.
[[nodiscard]] std::string logLine(const EventLogEntryRecord &entry);

// The last column alone: what happened.
void appendMessage(std::string &text, const EventLogEntryRecord &entry);

// A time to the millisecond, without a fraction when it has none.
[[nodiscard]] std::string timeText(SaHpiTimeT time);

// Whether the bytes of a text are characters of one byte each.
[[nodiscard]] bool isText(const SaHpiTextBufferT &buffer);

// Text with every character that is no printable ASCII replaced by a dot.
[[nodiscard]] std::string printable(const unsigned char *text, std::size_t length);

} // namespace zusahpi::evtlogctl
