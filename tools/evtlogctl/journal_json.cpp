// The keys of the journal that its readers need, and those of our own.
#include "tools/evtlogctl/journal_json.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include <syslog.h>

#include <fmt/format.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "tools/evtlogctl/cursor.h"
#include "tools/evtlogctl/log_line.h"

namespace zusahpi::evtlogctl {
namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void put(Writer &out, std::string_view key, std::string_view value) {
    out.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    out.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

void put(Writer &out, std::string_view key, std::uint64_t value) {
    const fmt::format_int digits(value);
    put(out, key, std::string_view(digits.data(), digits.size()));
}

[[nodiscard]] std::uint64_t microseconds(const EventLogEntryRecord &entry) {
    constexpr SaHpiTimeT nanosecondsEach = 1000;
    const SaHpiTimeT time = entry.entry.Event.Timestamp;
    const SaHpiTimeT moment = time > SAHPI_TIME_MAX_RELATIVE ? time : entry.entry.Timestamp;
    return static_cast<std::uint64_t>(std::max<SaHpiTimeT>(moment, 0) / nanosecondsEach);
}

[[nodiscard]] std::uint64_t priority(SaHpiSeverityT severity) {
    switch (severity) {
    case SAHPI_CRITICAL:
        return LOG_CRIT;
    case SAHPI_MAJOR:
        return LOG_ERR;
    case SAHPI_MINOR:
        return LOG_WARNING;
    case SAHPI_INFORMATIONAL:
    case SAHPI_OK:
        return LOG_NOTICE;
    default:
        return LOG_DEBUG;
    }
}

} // namespace

void appendJournalJson(std::string &text, const EventLogEntryRecord &entry) {
    const SaHpiEventT &event = entry.entry.Event;
    std::string message;
    appendMessage(message, entry);
    rapidjson::StringBuffer buffer;
    Writer out(buffer);
    out.StartObject();
    put(out, "__CURSOR", cursorText(cursorOf(entry)));
    put(out, "__REALTIME_TIMESTAMP", microseconds(entry));
    put(out, "PRIORITY", priority(event.Severity));
    put(out, "SYSLOG_IDENTIFIER", sourceText(entry));
    put(out, "MESSAGE", message);
    put(out, "HPI_ENTRY_ID", entry.entry.EntryId);
    put(out, "HPI_SEVERITY", static_cast<std::uint32_t>(event.Severity));
    put(out, "HPI_EVENT_TYPE", static_cast<std::uint32_t>(event.EventType));
    put(out, "HPI_SOURCE", event.Source);
    out.EndObject();
    text.append(buffer.GetString(), buffer.GetSize());
}

} // namespace zusahpi::evtlogctl
