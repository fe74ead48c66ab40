// Columns: number, when it was logged, and what `list` shows in a line.
#include "tools/evtlogctl/entry_csv.h"

#include <string_view>

#include <fmt/format.h>

#include "tools/evtlogctl/local_time.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/names.h"
#include "tools/evtlogctl/sel_severity.h"

namespace zusahpi::evtlogctl {
namespace {

void appendQuoted(std::string &text, std::string_view value) {
    text += ",\"";
    for (const char letter : value) {
        text.append(letter == '"' ? 2 : 1, letter);
    }
    text += '"';
}

void appendMoment(std::string &text, SaHpiTimeT time) {
    text += ',';
    appendTime(text, time, Precision::nanoseconds);
}

} // namespace

std::string csvHeader() {
    return "EntryId,Logged,Time,Severity,EventType,Source,Sensor,Message\n";
}

void appendEntryCsv(std::string &text, const EventLogEntryRecord &entry) {
    text += fmt::format_int(entry.entry.EntryId).str();
    appendMoment(text, entry.entry.Timestamp);
    appendMoment(text, entry.entry.Event.Timestamp);
    text += ',';
    text += sel::severityName(entry.entry.Event.Severity);
    text += ',';
    text += eventTypeName(entry.entry.Event.EventType);
    appendQuoted(text, sourceText(entry));
    appendQuoted(text, sensorText(entry));
    std::string message;
    appendMessage(message, entry);
    appendQuoted(text, message);
}

} // namespace zusahpi::evtlogctl
