// How the arguments of `list` are written, and how their words are read.
#include "tools/evtlogctl/list_arguments.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/file_argument.h"
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

constexpr const char *notes = R"(TIME is one of
  2026-11-21T09:06:12.250+01:00   a time as it is listed
  2026-11-21 09:06, 2026-11-21    local time; a date alone is its beginning, a time alone today's
  now, today, yesterday, tomorrow, -1h, -2d3h30m, "90s ago"
  +0d00:00:42                     counted from the start of the controller; before all others
Both ends belong to what is printed. On a terminal the entries are coloured by severity, unless
NO_COLOR is set, and shown by the pager that PAGER names, or less.)";

// Which entries are printed.
void addFilter(CLI::App &command, ListArguments &arguments) {
    EntryFilter &filter = arguments.options.filter;
    const auto text = [&command](const char *names, auto &to, const char *kind,
                                 const std::string &what) {
        return command.add_option(names, to, what)->type_name(kind)->allow_extra_args(false);
    };
    text("-p,--priority", arguments.priority, "SEVERITY",
         fmt::format("Entries of this severity and of more severe ones, or of FROM..TO: {}",
                     severityWords()));
    text("-t,--type", arguments.types, "TYPE",
         fmt::format("Entries of this event type, or of one of several: {}", eventTypeWords()))
        ->delimiter(',');
    text("-S,--since", arguments.since, "TIME", "Entries of this moment and later (see below)");
    text("-U,--until", arguments.until, "TIME", "Entries of this moment and earlier");
    text("--source", filter.sources, "NAME",
         "Entries of this source as it is listed, or by the number of the resource");
    text("--sensor", filter.sensors, "NAME",
         "Entries of this sensor as it is listed, or by its number");
    text("-g,--grep", arguments.pattern, "PATTERN",
         "Entries whose text matches an extended regular expression; without a capital letter in "
         "it, capitals and small letters are alike");
    text("--after-cursor", arguments.cursor, "CURSOR",
         "Entries behind a place that --show-cursor printed");
}

// In which order, and when.
void addOrder(CLI::App &command, ListOptions &options) {
    command.add_option("-n,--lines", options.newest, "Print only the newest N entries that fit")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    CLI::Option *const reverse =
        command.add_flag("-r,--reverse", options.reverse, "Print the newest entry first");
    command
        .add_flag("-e,--pager-end", options.pagerEnd,
                  "Begin at the end in the pager; the newest 1000 entries, unless -n says else")
        ->excludes(reverse);
    command
        .add_flag("-f,--follow", options.follow,
                  "Print the newest 10 entries, unless -n says else, and go on with entries as "
                  "they are added")
        ->excludes(reverse);
}

void addForm(CLI::App &command, ListArguments &arguments) {
    std::vector<std::string> names;
    names.reserve(forms.size());
    for (const auto &[name, form] : forms) {
        names.emplace_back(name);
    }
    command
        .add_option("-o,--output", arguments.form,
                    "Form of an entry: short (a line), short-iso (with all digits of its time), "
                    "verbose (all that it holds), json (an object in a line), json-journal (the "
                    "same for readers of the systemd journal), cat (its text alone), csv")
        ->type_name("FORM")
        ->check(CLI::IsMember(names));
    command
        .add_flag("--show-cursor", arguments.options.showCursor,
                  "Print a cursor for --after-cursor behind the entries")
        ->excludes("--follow");
    command.add_flag("--no-pager", arguments.options.noPager, "Print without a pager");
    command.add_flag("-q,--quiet", arguments.options.quiet, "Print no remarks on standard error");
}

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

CLI::App *addList(CLI::App &app, ListArguments &arguments) {
    CLI::App *const command =
        app.add_subcommand("list", "Print the entries of a log, oldest first; needs no lock");
    command->footer(notes);
    addLogFile(*command, arguments.options.file);
    addOrder(*command, arguments.options);
    addFilter(*command, arguments);
    addForm(*command, arguments);
    return command;
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
