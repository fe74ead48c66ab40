// How the words among the arguments of `list` are read.
#include "tools/evtlogctl/list_arguments.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/time_option.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr auto forms = std::to_array<std::pair<std::string_view, ListForm>>({
    {"short", ListForm::line},
    {"short-iso", ListForm::lineIso},
    {"verbose", ListForm::verbose},
    {"json", ListForm::json},
    {"json-journal", ListForm::jsonJournal},
    {"cat", ListForm::message},
    {"csv", ListForm::csv},
});

// The value that a word means, which must be there.
template <typename Value>
[[nodiscard]] Value meant(std::optional<Value> value, std::string_view word,
                          std::string_view what) {
    if (!value) {
        fail(Status::wrongUsage, "\"{}\" is no {}; see \"{} list --help\"", word, what,
             programName);
    }
    return *value;
}

// As meant(), of a time; a span without its sign is a mistake that is easily made.
[[nodiscard]] std::int64_t meantTime(std::optional<std::int64_t> moment, const std::string &word,
                                     SaHpiTimeT now) {
    if (!moment && word.find(':') == std::string::npos && parseMoment("-" + word, now)) {
        fail(Status::wrongUsage,
             "\"{0}\" is no time without a sign: -{0} is so long before now, +{0} after the start "
             "of the controller; see \"{1} list --help\"",
             word, programName);
    }
    return meant(moment, word, "time");
}

[[nodiscard]] Pattern patternOf(const std::string &text) {
    std::string error;
    Pattern pattern = compilePattern(text, error);
    if (pattern == nullptr) {
        fail(Status::wrongUsage, "\"{}\" is no extended regular expression: {}", text, error);
    }
    return pattern;
}

void settleFilter(EntryFilter &filter, const ListArguments &arguments) {
    const SaHpiTimeT now = zuSaHpiGetTimeofDay();
    if (const auto &word = arguments.priority) {
        filter.severities = meant(parseSeverityRange(*word), *word, "severity or range of them");
    }
    for (const std::string &word : arguments.types) {
        filter.types.push_back(meant(eventTypeOf(word), word, "event type"));
    }
    if (const auto &word = arguments.since) {
        filter.since = meantTime(parseMoment(*word, now), *word, now);
    }
    if (const auto &word = arguments.until) {
        filter.until = meantTime(parseEnd(*word, now), *word, now);
    }
    if (arguments.pattern) {
        filter.message = patternOf(*arguments.pattern);
    }
}

} // namespace

std::vector<std::string> listFormWords() {
    std::vector<std::string> words;
    words.reserve(forms.size());
    for (const auto &[word, form] : forms) {
        words.emplace_back(word);
    }
    return words;
}

ListOptions settledOptions(const ListArguments &arguments) {
    constexpr std::size_t enoughToLookAt = 1000;
    ListOptions options = arguments.options;
    settleFilter(options.filter, arguments);
    options.form = std::find_if(forms.begin(), forms.end(), [&](const auto &form) {
                       return form.first == arguments.form;
                   })->second;
    if (const auto &word = arguments.cursor) {
        options.after = meant(parseCursor(*word), *word, "cursor");
    }
    if (options.pagerEnd && !options.newest) {
        options.newest = enoughToLookAt;
    }
    return options;
}

} // namespace zusahpi::evtlogctl
