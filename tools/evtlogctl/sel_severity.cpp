// The built-in severities, and the text form of a table.
#include "tools/evtlogctl/sel_severity.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/ipmi_tables.h"
#include "tools/evtlogctl/log_line.h"

namespace zusahpi::sel {
namespace {

using evtlogctl::fail;

template <typename Value>
using Word = std::pair<std::string_view, Value>;

constexpr auto categories = std::to_array<Word<SaHpiEventCategoryT>>({
    {"unspecified", SAHPI_EC_UNSPECIFIED},
    {"threshold", SAHPI_EC_THRESHOLD},
    {"usage", SAHPI_EC_USAGE},
    {"state", SAHPI_EC_STATE},
    {"pred-fail", SAHPI_EC_PRED_FAIL},
    {"limit", SAHPI_EC_LIMIT},
    {"performance", SAHPI_EC_PERFORMANCE},
    {"severity", SAHPI_EC_SEVERITY},
    {"presence", SAHPI_EC_PRESENCE},
    {"enable", SAHPI_EC_ENABLE},
    {"availability", SAHPI_EC_AVAILABILITY},
    {"redundancy", SAHPI_EC_REDUNDANCY},
    {"sensor-specific", SAHPI_EC_SENSOR_SPECIFIC},
    {"generic", SAHPI_EC_GENERIC},
    {"oem", oemCategory},
});

constexpr auto severities = std::to_array<Word<SaHpiSeverityT>>({
    {"critical", SAHPI_CRITICAL},
    {"major", SAHPI_MAJOR},
    {"minor", SAHPI_MINOR},
    {"informational", SAHPI_INFORMATIONAL},
    {"ok", SAHPI_OK},
    {"debug", SAHPI_DEBUG},
});

constexpr auto directions = std::to_array<Word<std::optional<bool>>>({
    {"asserted", true},
    {"deasserted", false},
    {"*", std::nullopt},
});

constexpr std::string_view everyState = "*";
constexpr std::string_view noState = "-";
constexpr unsigned lastState = 14;

// The severities of assertions by category and state; whatever is not here is informational.
struct CategoryRow {
    SaHpiEventCategoryT category;
    std::optional<unsigned> state; // none: every state that no row above names
    SaHpiSeverityT severity;
};

constexpr auto categoryRows = std::to_array<CategoryRow>({
    {SAHPI_EC_THRESHOLD, 0, SAHPI_MINOR},    {SAHPI_EC_THRESHOLD, 1, SAHPI_MAJOR},
    {SAHPI_EC_THRESHOLD, 2, SAHPI_CRITICAL}, {SAHPI_EC_THRESHOLD, 3, SAHPI_MINOR},
    {SAHPI_EC_THRESHOLD, 4, SAHPI_MAJOR},    {SAHPI_EC_THRESHOLD, 5, SAHPI_CRITICAL},
    {SAHPI_EC_PRED_FAIL, 0, SAHPI_OK},       {SAHPI_EC_PRED_FAIL, 1, SAHPI_MINOR},
    {SAHPI_EC_LIMIT, 0, SAHPI_OK},           {SAHPI_EC_LIMIT, 1, SAHPI_MINOR},
    {SAHPI_EC_PERFORMANCE, 0, SAHPI_OK},     {SAHPI_EC_PERFORMANCE, 1, SAHPI_MINOR},
    {SAHPI_EC_SEVERITY, 0, SAHPI_OK},        {SAHPI_EC_SEVERITY, 1, SAHPI_MINOR},
    {SAHPI_EC_SEVERITY, 2, SAHPI_MAJOR},     {SAHPI_EC_SEVERITY, 3, SAHPI_CRITICAL},
    {SAHPI_EC_SEVERITY, 4, SAHPI_MINOR},     {SAHPI_EC_SEVERITY, 5, SAHPI_MAJOR},
    {SAHPI_EC_SEVERITY, 6, SAHPI_CRITICAL},  {SAHPI_EC_AVAILABILITY, 6, SAHPI_MINOR},
    {SAHPI_EC_AVAILABILITY, 8, SAHPI_MAJOR}, {SAHPI_EC_REDUNDANCY, 0, SAHPI_OK},
    {SAHPI_EC_REDUNDANCY, 1, SAHPI_MAJOR},   {SAHPI_EC_REDUNDANCY, 5, SAHPI_MAJOR},
    {SAHPI_EC_REDUNDANCY, {}, SAHPI_MINOR},
});

[[nodiscard]] SeverityTable makeBuiltIn() {
    SeverityTable table;
    for (const CategoryRow &row : categoryRows) {
        table.push_back({.category = row.category,
                         .sensorType = {},
                         .everyState = !row.state.has_value(),
                         .state = row.state,
                         .asserted = true,
                         .severity = row.severity});
    }
    for (const SpecificEvent &event : specificEvents()) {
        table.push_back({.category = SAHPI_EC_SENSOR_SPECIFIC,
                         .sensorType = event.sensorType,
                         .everyState = false,
                         .state = event.offset,
                         .asserted = true,
                         .severity = event.severity});
    }
    return table;
}

[[nodiscard]] bool fits(const SeverityRule &rule, const Occasion &occasion) {
    return rule.category == occasion.category &&
           (!rule.sensorType || *rule.sensorType == occasion.sensorType) &&
           (rule.everyState || rule.state == occasion.state) &&
           (!rule.asserted || *rule.asserted == occasion.asserted);
}

// The words of a line up to a comment.
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    line = line.substr(0, line.find('#'));
    std::vector<std::string_view> words;
    for (std::size_t begin = line.find_first_not_of(blanks); begin != std::string_view::npos;
         begin = line.find_first_not_of(blanks, begin)) {
        const std::size_t end = std::min(line.find_first_of(blanks, begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = end;
    }
    return words;
}

struct Place {
    std::string_view name;
    std::size_t line;
};

// A word may hold anything, and the message ends up on a terminal.
[[noreturn]] void failAt(const Place &place, std::string_view word, std::string_view meaning) {
    const auto *const text = reinterpret_cast<const unsigned char *>(word.data());
    fail(evtlogctl::Status::wrongUsage, "{}:{}: \"{}\" is no {}; see \"evtlogctl import --help\"",
         place.name, place.line, evtlogctl::printable(text, word.size()), meaning);
}

template <typename Table>
[[nodiscard]] auto lookUp(const Table &table, std::string_view word, std::string_view meaning,
                          const Place &place) {
    for (const auto &[text, value] : table) {
        if (text == word) {
            return value;
        }
    }
    failAt(place, word, meaning);
}

[[nodiscard]] unsigned number(std::string_view digits, int base, unsigned largest,
                              std::string_view word, std::string_view meaning, const Place &place) {
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc{} || stop != end || value > largest) {
        failAt(place, word, meaning);
    }
    return value;
}

[[nodiscard]] std::uint8_t sensorTypeOf(std::string_view word, const Place &place) {
    constexpr std::string_view mark = "0x";
    const auto digits = word.starts_with(mark) ? word.substr(mark.size()) : std::string_view{};
    return static_cast<std::uint8_t>(
        number(digits, 16, 0xFF, word, "sensor type (0x00 to 0xFF)", place));
}

[[nodiscard]] SeverityRule parseRule(const std::vector<std::string_view> &words,
                                     const Place &place) {
    constexpr std::size_t wordsOfRule = 4;
    if (words.size() != wordsOfRule) {
        fail(evtlogctl::Status::wrongUsage,
             "{}:{}: {} words instead of CATEGORY STATE DIRECTION SEVERITY; see \"evtlogctl "
             "import --help\"",
             place.name, place.line, words.size());
    }
    SeverityRule rule;
    const std::size_t slash = words[0].find('/');
    rule.category = lookUp(categories, words[0].substr(0, slash), "event category", place);
    if (slash != std::string_view::npos) {
        rule.sensorType = sensorTypeOf(words[0].substr(slash + 1), place);
    }
    rule.everyState = words[1] == everyState;
    if (!rule.everyState && words[1] != noState) {
        rule.state = number(words[1], 10, lastState, words[1], "state (0 to 14, - or *)", place);
    }
    rule.asserted = lookUp(directions, words[2], "direction", place);
    rule.severity = lookUp(severities, words[3], "severity", place);
    return rule;
}

template <typename Table, typename Value>
[[nodiscard]] std::string_view wordFor(const Table &table, const Value &value) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const auto &row) { return row.second == value; });
    return found == table.end() ? std::string_view{} : found->first;
}

} // namespace

const SeverityTable &builtInSeverities() {
    static const SeverityTable table = makeBuiltIn();
    return table;
}

SaHpiSeverityT severityOf(const Occasion &occasion, const SeverityTable &table) {
    for (const SeverityRule &rule : table) {
        if (fits(rule, occasion)) {
            return rule.severity;
        }
    }
    return SAHPI_INFORMATIONAL;
}

SeverityTable parseSeverities(std::string_view text, std::string_view name) {
    SeverityTable table;
    std::size_t line = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const auto words = wordsOf(text.substr(begin, end - begin));
        ++line;
        if (!words.empty()) {
            table.push_back(parseRule(words, {name, line}));
        }
        begin = end + 1;
    }
    return table;
}

std::string severityText(const SeverityTable &table) {
    std::string text;
    for (const SeverityRule &rule : table) {
        std::string category(wordFor(categories, rule.category));
        if (rule.sensorType) {
            category += fmt::format("/0x{:02X}", *rule.sensorType);
        }
        const std::string state = rule.everyState ? std::string(everyState)
                                  : rule.state    ? fmt::format("{}", *rule.state)
                                                  : std::string(noState);
        text += fmt::format("{:<20}  {:<5}  {:<10}  {}\n", category, state,
                            wordFor(directions, rule.asserted), wordFor(severities, rule.severity));
    }
    return text;
}

std::string severityName(SaHpiSeverityT severity) {
    const std::string_view word = wordFor(severities, severity);
    return word.empty() ? fmt::format("{}", static_cast<std::uint32_t>(severity))
                        : std::string(word);
}

} // namespace zusahpi::sel
