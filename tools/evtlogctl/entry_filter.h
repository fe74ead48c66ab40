// Which entries a user wants to see.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <regex.h>

#include "hpi/SaHpi.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// A range of severities, from critical (0) to debug (5). A number that is no severity is in none.
struct SeverityRange {
    unsigned most;  // severe
    unsigned least; // severe
};

// "major": that and all that is more severe; "minor..debug": both and what is between. Nothing when
// the text is neither.
[[nodiscard]] std::optional<SeverityRange> parseSeverityRange(std::string_view text);

// The words that severities and event types have here, "a, b or c" for a message.
[[nodiscard]] std::string severityWords();
[[nodiscard]] std::string eventTypeWords();

// Nothing when the word names no event type.
[[nodiscard]] std::optional<SaHpiEventTypeT> eventTypeOf(std::string_view word);

// A compiled pattern, shared by its copies.
using Pattern = std::shared_ptr<const regex_t>;

// A POSIX extended regular expression; without a capital letter in it, capitals and small letters
// are alike. `error` says what is wrong when there is no pattern.
[[nodiscard]] Pattern compilePattern(const std::string &text, std::string &error);

// Every part that is there must fit. Of several types, sources or sensors one must.
struct EntryFilter {
    std::optional<SeverityRange> severities;
    std::vector<SaHpiEventTypeT> types;
    std::optional<std::int64_t> since; // both ends belong to it
    std::optional<std::int64_t> until;
    std::vector<std::string> sources; // as `list` shows them, or the number of a resource
    std::vector<std::string> sensors; // the name, or the number of a sensor
    Pattern message;
    std::optional<std::int64_t> loggedAfter; // not the time of the event
};

// Whether it lets every entry pass.
[[nodiscard]] bool isEmpty(const EntryFilter &filter);

[[nodiscard]] bool matches(const EntryFilter &filter, const EventLogEntryRecord &entry);

} // namespace zusahpi::evtlogctl
