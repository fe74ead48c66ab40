// An entry of a log as one readable line.
#pragma once

#include <string>
#include <string_view>

#include "tools/evtlogctl/local_time.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

struct LineStyle {
    Precision precision = Precision::milliseconds;
    bool coloured = false; // by severity, with the escape sequences of terminals
};

// Without a newline, and, but for colours, without any character outside printable ASCII, whatever
// the entry holds:
//
//   entry id, time of the event, severity, source, what happened
//
// An event without a time shows when it was logged, and the line says so at its end.
void appendLogLine(std::string &text, const EventLogEntryRecord &entry,
                   const LineStyle &style = {});

// The same as a text of its own.
[[nodiscard]] std::string logLine(const EventLogEntryRecord &entry);

// What such a line ends with.
inline constexpr std::string_view timeOfLoggingNote = " (time of logging)";

// Single columns. The source is the tag of the resource or its number, "-" for none.
void appendSource(std::string &text, const EventLogEntryRecord &entry);
void appendMessage(std::string &text, const EventLogEntryRecord &entry);
[[nodiscard]] std::string sourceText(const EventLogEntryRecord &entry);

// The sensor or watchdog that an event is from: its id string when the entry has one, its number
// otherwise. Nothing for an event that is from neither.
void appendSensorName(std::string &text, const EventLogEntryRecord &entry);

[[nodiscard]] std::string sensorText(const EventLogEntryRecord &entry);

// The time of the event, or for an event without one when it was logged.
[[nodiscard]] SaHpiTimeT shownTime(const EventLogEntryRecord &entry);

// Whether the bytes of a text are characters of one byte each.
[[nodiscard]] bool isText(const SaHpiTextBufferT &buffer);

// Text with every character that is no printable ASCII replaced by a dot.
[[nodiscard]] std::string printable(const unsigned char *text, std::size_t length);

} // namespace zusahpi::evtlogctl
