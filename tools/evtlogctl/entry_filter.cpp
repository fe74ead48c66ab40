// What an entry is compared by is what `list` shows of it.
#include "tools/evtlogctl/entry_filter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/names.h"
#include "tools/evtlogctl/sel_severity.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] std::optional<unsigned> rankOf(SaHpiSeverityT severity) {
    const auto &all = sel::severitiesByRank;
    const auto found = std::find(all.begin(), all.end(), severity);
    return found == all.end() ? std::nullopt : std::optional<unsigned>(found - all.begin());
}

[[nodiscard]] std::optional<unsigned> rankOf(std::string_view word) {
    for (const SaHpiSeverityT severity : sel::severitiesByRank) {
        if (sel::severityName(severity) == word) {
            return rankOf(severity);
        }
    }
    return std::nullopt;
}

void addWord(std::string &text, std::string_view word, bool last) {
    text += text.empty() ? "" : last ? " or " : ", ";
    text += word;
}

// A decimal number, or a hexadecimal one after 0x.
[[nodiscard]] std::optional<std::uint32_t> numberOf(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(hexadecimal ? 2 : 0);
    std::uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
    return error == std::errc{} && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

[[nodiscard]] bool isFromAny(const std::vector<std::string> &sources,
                             const EventLogEntryRecord &entry) {
    const std::string shown = sourceText(entry);
    return std::any_of(sources.begin(), sources.end(), [&](const std::string &source) {
        return source == shown || numberOf(source) == entry.entry.Event.Source;
    });
}

[[nodiscard]] std::optional<SaHpiSensorNumT> sensorNumber(const SaHpiEventT &event) {
    switch (event.EventType) {
    case SAHPI_ET_SENSOR:
        return event.EventDataUnion.SensorEvent.SensorNum;
    case SAHPI_ET_SENSOR_ENABLE_CHANGE:
        return event.EventDataUnion.SensorEnableChangeEvent.SensorNum;
    default:
        return std::nullopt;
    }
}

[[nodiscard]] bool isOfAny(const std::vector<std::string> &sensors,
                           const EventLogEntryRecord &entry) {
    const auto number = sensorNumber(entry.entry.Event);
    const std::string shown = sensorText(entry);
    return std::any_of(sensors.begin(), sensors.end(), [&](const std::string &sensor) {
        return (!shown.empty() && sensor == shown) || (number && numberOf(sensor) == number);
    });
}

[[nodiscard]] bool isIn(const SeverityRange &range, SaHpiSeverityT severity) {
    const auto rank = rankOf(severity);
    return rank && *rank >= range.most && *rank <= range.least;
}

[[nodiscard]] bool says(const regex_t &pattern, const EventLogEntryRecord &entry) {
    std::string message;
    appendMessage(message, entry);
    return regexec(&pattern, message.c_str(), 0, nullptr, 0) == 0;
}

} // namespace

std::optional<SeverityRange> parseSeverityRange(std::string_view text) {
    constexpr std::string_view dots = "..";
    const std::size_t gap = text.find(dots);
    if (gap == std::string_view::npos) {
        const auto rank = rankOf(text);
        return rank ? std::optional(SeverityRange{.most = 0, .least = *rank}) : std::nullopt;
    }
    const auto from = rankOf(text.substr(0, gap));
    const auto to = rankOf(text.substr(gap + dots.size()));
    if (!from || !to) {
        return std::nullopt;
    }
    return SeverityRange{.most = std::min(*from, *to), .least = std::max(*from, *to)};
}

std::string severityWords() {
    std::string text;
    for (const SaHpiSeverityT severity : sel::severitiesByRank) {
        addWord(text, sel::severityName(severity), severity == sel::severitiesByRank.back());
    }
    return text;
}

std::string eventTypeWords() {
    std::string text;
    for (std::uint32_t type = SAHPI_ET_RESOURCE; type <= SAHPI_ET_USER; ++type) {
        addWord(text, eventTypeName(type), type == SAHPI_ET_USER);
    }
    return text;
}

std::optional<SaHpiEventTypeT> eventTypeOf(std::string_view word) {
    for (std::uint32_t type = SAHPI_ET_RESOURCE; type <= SAHPI_ET_USER; ++type) {
        if (word == eventTypeName(type)) {
            return static_cast<SaHpiEventTypeT>(type);
        }
    }
    return std::nullopt;
}

Pattern compilePattern(const std::string &text, std::string &error) {
    const bool capitals = std::any_of(text.begin(), text.end(),
                                      [](char letter) { return letter >= 'A' && letter <= 'Z'; });
    regex_t compiled{};
    const int result =
        regcomp(&compiled, text.c_str(), REG_EXTENDED | REG_NOSUB | (capitals ? 0 : REG_ICASE));
    if (result != 0) {
        std::array<char, 128> reason{};
        (void)regerror(result, &compiled, reason.data(), reason.size());
        error = reason.data();
        return nullptr;
    }
    return {new regex_t(compiled), [](regex_t *pattern) {
                regfree(pattern);
                delete pattern;
            }};
}

bool isEmpty(const EntryFilter &filter) {
    return !filter.severities && filter.types.empty() && !filter.since && !filter.until &&
           filter.sources.empty() && filter.sensors.empty() && filter.message == nullptr &&
           !filter.loggedAfter;
}

bool matches(const EntryFilter &filter, const EventLogEntryRecord &entry) {
    const SaHpiEventT &event = entry.entry.Event;
    const SaHpiTimeT time = shownTime(entry);
    return (!filter.loggedAfter || entry.entry.Timestamp > *filter.loggedAfter) &&
           (!filter.since || time >= *filter.since) && (!filter.until || time <= *filter.until) &&
           (!filter.severities || isIn(*filter.severities, event.Severity)) &&
           (filter.types.empty() || std::find(filter.types.begin(), filter.types.end(),
                                              event.EventType) != filter.types.end()) &&
           (filter.sources.empty() || isFromAny(filter.sources, entry)) &&
           (filter.sensors.empty() || isOfAny(filter.sensors, entry)) &&
           (filter.message == nullptr || says(*filter.message, entry));
}

} // namespace zusahpi::evtlogctl
