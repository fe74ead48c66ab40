// The table of the keywords and the lookups over it. Invariant: a keyword of kind word has a word
// for every value that it takes, so a number is right exactly when some word means it.
#include "mainlib/config_keywords.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "mainlib/letter_case.h"
#include "mainlib/syslog_levels.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::mainlib {
namespace {

constexpr std::array logTypes = {Word{"simple", ZUSAHPI_EL_TYPE_SIMPLE},
                                 Word{"circular", ZUSAHPI_EL_TYPE_CIRCULAR},
                                 Word{"linked", ZUSAHPI_EL_TYPE_LINKED}, Word{"syslog", 3}};

constexpr std::array overflowActions = {Word{"drop", ZUSAHPI_EL_DROP},
                                        Word{"wrap", ZUSAHPI_EL_WRAP},
                                        Word{"writelast", ZUSAHPI_EL_WRITE_LAST}};

constexpr std::array booleans = {Word{"yes", 1}, Word{"no", 0}};

constexpr std::array eventTypes = {Word{"resource", SAHPI_ET_RESOURCE},
                                   Word{"domain", SAHPI_ET_DOMAIN},
                                   Word{"sensor", SAHPI_ET_SENSOR},
                                   Word{"sensor_enable_change", SAHPI_ET_SENSOR_ENABLE_CHANGE},
                                   Word{"hotswap", SAHPI_ET_HOTSWAP},
                                   Word{"watchdog", SAHPI_ET_WATCHDOG},
                                   Word{"hpi_sw", SAHPI_ET_HPI_SW},
                                   Word{"oem", SAHPI_ET_OEM},
                                   Word{"user", SAHPI_ET_USER},
                                   Word{"all", ZUSAHPI_CONF_ALL}};

constexpr std::array severities = {Word{"critical", SAHPI_CRITICAL},
                                   Word{"major", SAHPI_MAJOR},
                                   Word{"minor", SAHPI_MINOR},
                                   Word{"informational", SAHPI_INFORMATIONAL},
                                   Word{"ok", SAHPI_OK},
                                   Word{"debug", SAHPI_DEBUG},
                                   Word{"all", SAHPI_ALL_SEVERITIES}};

constexpr auto levelWords() {
    std::array<Word, syslogLevelNames.size() + 1> words{};
    for (std::uint32_t level = 0; level < syslogLevelNames.size(); ++level) {
        words[level] = {syslogLevelNames[level], level};
    }
    words.back() = {"none", ZUSAHPI_CONF_NO_LEVEL};
    return words;
}

constexpr auto levels = levelWords();

constexpr std::uint32_t anySize = std::numeric_limits<std::uint32_t>::max();

constexpr std::array keywords = {
    Keyword{"EventLog", ZUSAHPI_CONF_EVENT_LOG, 0, ValueKind::word, logTypes},
    Keyword{"Filename", ZUSAHPI_CONF_FILE_NAME, ZUSAHPI_CONF_EVENT_LOG, ValueKind::text},
    Keyword{"Reinitialize", ZUSAHPI_CONF_REINITIALIZE, ZUSAHPI_CONF_EVENT_LOG, ValueKind::word,
            booleans},
    Keyword{"Size", ZUSAHPI_CONF_SIZE, ZUSAHPI_CONF_EVENT_LOG, ValueKind::number, {}, 1, anySize},
    Keyword{"Overflow", ZUSAHPI_CONF_OVERFLOW, ZUSAHPI_CONF_EVENT_LOG, ValueKind::word,
            overflowActions},
    Keyword{"UserEventMaxSize",
            ZUSAHPI_CONF_USER_EVENT_MAX_SIZE,
            ZUSAHPI_CONF_EVENT_LOG,
            ValueKind::number,
            {},
            0,
            SAHPI_MAX_TEXT_BUFFER_LENGTH},
    Keyword{"Enabled", ZUSAHPI_CONF_ENABLED, ZUSAHPI_CONF_EVENT_LOG, ValueKind::word, booleans},
    Keyword{"RelativeTime", ZUSAHPI_CONF_RELATIVE_TIME, ZUSAHPI_CONF_EVENT_LOG, ValueKind::word,
            booleans},
    Keyword{"OverflowResetable", ZUSAHPI_CONF_OVERFLOW_RESETABLE, ZUSAHPI_CONF_EVENT_LOG,
            ValueKind::word, booleans},
    Keyword{"Syslog", ZUSAHPI_CONF_SYSLOG, ZUSAHPI_CONF_EVENT_LOG, ValueKind::word, booleans},
    Keyword{"EventLogSyslogEventType", ZUSAHPI_CONF_SYSLOG_EVENT_TYPE, ZUSAHPI_CONF_SYSLOG,
            ValueKind::word, eventTypes},
    Keyword{"EventLogSyslogSeverity", ZUSAHPI_CONF_SYSLOG_SEVERITY, ZUSAHPI_CONF_SYSLOG_EVENT_TYPE,
            ValueKind::word, severities},
    Keyword{"EventLogSyslogLevel", ZUSAHPI_CONF_SYSLOG_LEVEL, ZUSAHPI_CONF_SYSLOG_SEVERITY,
            ValueKind::word, levels},
    Keyword{"SyslogFollowsState", ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE, ZUSAHPI_CONF_SYSLOG,
            ValueKind::word, booleans},
    Keyword{"SyslogSuppressResource", ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE, ZUSAHPI_CONF_SYSLOG,
            ValueKind::word, booleans},
};

// Decimal digits, or hexadecimal ones after 0x, and nothing else.
std::optional<std::uint32_t> numberOf(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    std::uint32_t number = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc{} || stop != end) {
        return std::nullopt;
    }
    return number;
}

const Word *findWord(std::span<const Word> words, std::uint32_t value) {
    const auto found = std::ranges::find(words, value, &Word::value);
    return found == words.end() ? nullptr : &*found;
}

} // namespace

const Keyword *findKeyword(std::string_view text) {
    const auto found = std::ranges::find_if(
        keywords, [text](const Keyword &keyword) { return sameWord(keyword.text, text); });
    return found == keywords.end() ? nullptr : &*found;
}

const Keyword *findKeyword(std::uint32_t code) {
    const auto found = std::ranges::find(keywords, code, &Keyword::code);
    return found == keywords.end() ? nullptr : &*found;
}

bool hasSubordinates(const Keyword &keyword) {
    return std::ranges::find(keywords, keyword.code, &Keyword::superior) != keywords.end();
}

std::optional<std::uint32_t> valueOf(const Keyword &keyword, std::string_view text) {
    const std::optional<std::uint32_t> number = numberOf(text);
    if (keyword.kind == ValueKind::number) {
        const bool inRange = number && *number >= keyword.lowest && *number <= keyword.highest;
        return inRange ? number : std::nullopt;
    }
    if (number) {
        return findWord(keyword.words, *number) != nullptr ? number : std::nullopt;
    }
    for (const Word &word : keyword.words) {
        if (sameWord(word.text, text)) {
            return word.value;
        }
    }
    return std::nullopt;
}

std::string expectation(const Keyword &keyword) {
    if (keyword.kind == ValueKind::number) {
        return "a number from " + std::to_string(keyword.lowest) + " to " +
               std::to_string(keyword.highest);
    }
    std::string list;
    for (const Word &word : keyword.words) {
        if (!list.empty()) {
            list += &word == &keyword.words.back() ? " or " : ", ";
        }
        list += word.text;
    }
    return list;
}

} // namespace zusahpi::mainlib

const char *zuSaHpiConfigKeyword(uint32_t code) {
    const zusahpi::mainlib::Keyword *const keyword = zusahpi::mainlib::findKeyword(code);
    return keyword == nullptr ? nullptr : keyword->text;
}

const char *zuSaHpiConfigWord(uint32_t code, uint32_t value) {
    using namespace zusahpi::mainlib;
    const Keyword *const keyword = findKeyword(code);
    const Word *const word = keyword == nullptr ? nullptr : findWord(keyword->words, value);
    return word == nullptr ? nullptr : word->text;
}
