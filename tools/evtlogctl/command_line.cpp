// Options and commands of evtlogctl.
#include "tools/evtlogctl/command_line.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/entry_filter.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/list_arguments.h"
#include "tools/evtlogctl/local_time.h"
#include "tools/evtlogctl/log_reader.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

// Everything that the arguments can say.
struct Arguments {
    Settings settings;
    std::optional<std::string> syslog;
    ImportOptions import;
    std::vector<std::string> importWords; // the file, or the command of a watch
    bool watch = false;
    double interval = 60;   // seconds
    double timeLimit = 300; // seconds
    std::string form = "auto";
    std::string utcOffset = "Z";
    bool reversedOem = false;
    std::string exportForm = "sel";
    ListArguments list;
    bool utc = false;
    CheckOptions check;
    StatOptions stat;
    PageOptions report;
    bool allRows = false;
    std::string outputForm = "text"; // of every command that reports on something as a whole
    std::string file;                // of every other command
};

constexpr const char *importNotes =
    R"(Forms of FILE (found by looking at the data, --format says it):
  raw    16-byte records one after another, as "ipmitool sel writeraw" writes them
  text   a record in every line that has sixteen hexadecimal bytes in a row

A watch runs until it is asked to end (Ctrl-C, SIGTERM):
  evtlogctl import --watch [options] -- COMMAND [WORD...]
No shell reads the words. A word {} stands for a file that the command writes the records to:
  evtlogctl import --watch --ipmitool-order -- ipmitool -I open sel writeraw {}

Severity table, a line for each rule; the first that fits decides, and an event that none fits is
informational:
  CATEGORY[/SENSOR-TYPE]  STATE  DIRECTION  SEVERITY      # comment
  CATEGORY     unspecified threshold usage state pred-fail limit performance severity presence
               enable availability redundancy sensor-specific generic oem
  SENSOR-TYPE  byte 10 of the record, 0x00 to 0xFF
  STATE        0 to 14, - for an event without a state, * for all
  DIRECTION    asserted, deasserted, * for both
  SEVERITY     critical major minor informational ok debug)";

constexpr const char *listNotes =
    R"(TIME is one of
  2026-11-21T09:06:12.250+01:00   a time as it is listed
  2026-11-21 09:06, 2026-11-21    local time; a date alone is its beginning, a time alone today's
  now, today, yesterday, tomorrow, -1h, -2d3h30m, "90s ago"
  +0d00:00:42                     counted from the start of the controller; before all others
Both ends belong to what is printed. On a terminal the entries are coloured by severity, unless
NO_COLOR is set, and shown by the pager that PAGER names, or less.)";

// Of the names that --format takes.
[[nodiscard]] sel::Form formOf(std::string_view name) {
    if (name == "raw") {
        return sel::Form::raw;
    }
    return name == "text" ? sel::Form::text : sel::Form::automatic;
}

// Of the names that --output takes where a command reports on something as a whole.
[[nodiscard]] OutputForm outputFormOf(std::string_view name) {
    return name == "json" ? OutputForm::json : OutputForm::text;
}

// What is wrong with the name of a file: an empty one, as of a variable of a script that was never
// set, would stand for no name. Empty when nothing is.
[[nodiscard]] std::string wrongName(const std::string &name) {
    return name.empty() ? "a file name is needed" : "";
}

// The argument FILE of a command that reads a log, or the configured log without one.
void addLogFile(CLI::App &command, std::string &file) {
    command.add_option("FILE", file, "Log file; the configured log without it")
        ->type_name("")
        ->check(wrongName);
}

void addOutputForm(CLI::App *command, Arguments &arguments) {
    command->add_option("-o,--output", arguments.outputForm, "Form of the output: text or json")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "json"}));
}

constexpr const char *statusNotes = R"(Exit status:
  0  done
  1  nothing matched, something was left out, or a check found something that is no damage
  2  wrong usage: command line, configuration, severity table
  3  a damaged log, or a file that is no log
  4  the system said no: a missing file, a permission, a full disk, a lock)";

void addGlobalOptions(CLI::App &app, Arguments &arguments) {
    app.add_option("--config", arguments.settings.configFile,
                   "Configuration file; without it a Linked log of 10,000 entries that wraps")
        ->type_name("FILE");
    app.add_option("--root", arguments.settings.root,
                   "Folder that holds the folder evtlog/ of the logs; default: /var/lib/zusahpi as "
                   "root, $XDG_STATE_HOME/zusahpi or ~/.local/state/zusahpi for other users")
        ->type_name("DIR");
    app.add_option("--syslog", arguments.syslog,
                   "Forward added events, to stderr or syslog; without it the configuration says "
                   "whether, and they go to syslog")
        ->type_name("WHERE")
        ->check(CLI::IsMember({"stderr", "syslog"}));
    app.add_flag("--utc", arguments.utc, "Print times in UTC, not in local time");
    app.set_version_flag("--version", fmt::format("{} {}", programName, ZUSAHPI_UTIL_VERSION));
    app.footer(statusNotes);
    app.require_subcommand(1);
    app.fallthrough(); // global options may stand after the command too
}

// Those of `import --watch` alone.
void addWatchOptions(CLI::App &command, Arguments &arguments) {
    constexpr double shortest = 0.1;
    constexpr double longest = 86'400; // a day
    // CLI::Range lets through what is neither below nor above it.
    const auto isNumber = [](const std::string &text) {
        double value = 0;
        return CLI::detail::lexical_cast(text, value) && std::isnan(value) ? text + " is no number"
                                                                           : std::string();
    };
    CLI::Option *const watch = command.add_flag(
        "--watch", arguments.watch,
        "Run the command COMMAND, which prints the records, again and again, and add what is new; "
        "see below");
    command
        .add_option("--interval", arguments.interval,
                    "With --watch: seconds from one reading to the next; default: 60")
        ->type_name("SECONDS")
        ->check(CLI::Range(shortest, longest))
        ->check(isNumber)
        ->needs(watch);
    command
        .add_option("--timeout", arguments.timeLimit,
                    "With --watch: seconds after which the command is stopped; default: 300")
        ->type_name("SECONDS")
        ->check(CLI::Range(shortest, longest))
        ->check(isNumber)
        ->needs(watch);
}

CLI::App *addImport(CLI::App &app, Arguments &arguments) {
    CLI::App *const command =
        app.add_subcommand("import", "Add the records of an IPMI System Event Log to the log");
    command->footer(importNotes);
    // CLI11 splits "[a,b]" where extra words are allowed. As many as there may be are expected.
    constexpr int most = CLI::detail::expected_max_vector_size;
    command->add_option("FILE", arguments.importWords, "File of records; - for standard input")
        ->type_name("")
        ->expected(most, most)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false)
        ->required();
    command->add_option("--format", arguments.form, "Form of FILE: auto, raw or text")
        ->type_name("FORM")
        ->check(CLI::IsMember({"auto", "raw", "text"}));
    command->add_flag("--ipmitool-order", arguments.reversedOem,
                      "Manufacturer ids of OEM records stand most significant byte first");
    command
        ->add_option("--utc-offset", arguments.utcOffset,
                     "How far the clock of the records is before UTC: +hh:mm or -hh:mm")
        ->type_name("OFFSET")
        ->check([](const std::string &text) {
            return parseUtcOffset(text) ? std::string()
                                        : text + " is no offset of the form +hh:mm or -hh:mm";
        });
    command->add_flag("--all", arguments.import.all, "Add records that the log already holds too");
    command
        ->add_option("--severity-table", arguments.import.severityTable,
                     "File with a table that replaces the built-in severities")
        ->type_name("FILE");
    command->add_flag("-q,--quiet", arguments.import.quiet, "Do not print what was added");
    addWatchOptions(*command, arguments);
    return command;
}

CLI::App *addExport(CLI::App &app, Arguments &arguments) {
    CLI::App *const command =
        app.add_subcommand("export", "Write the imported records of the log back, byte for byte");
    command->add_option("FILE", arguments.file, "File to write; standard output without it")
        ->type_name("")
        ->check(wrongName);
    command->add_option("--format", arguments.exportForm, "Form of the output: sel")
        ->type_name("FORM")
        ->check(CLI::IsMember({"sel"}));
    return command;
}

// Which entries are printed.
void addListFilter(CLI::App &command, ListArguments &arguments) {
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
void addListOrder(CLI::App &command, ListOptions &options) {
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

void addListForm(CLI::App &command, ListArguments &arguments) {
    command
        .add_option("-o,--output", arguments.form,
                    "Form of an entry: short (a line), short-iso (with all digits of its time), "
                    "verbose (all that it holds), json (an object in a line), json-journal (the "
                    "same for readers of the systemd journal), cat (its text alone), csv")
        ->type_name("FORM")
        ->check(CLI::IsMember(listFormWords()));
    command
        .add_flag("--show-cursor", arguments.options.showCursor,
                  "Print a cursor for --after-cursor behind the entries")
        ->excludes("--follow");
    command.add_flag("--no-pager", arguments.options.noPager, "Print without a pager");
    command.add_flag("-q,--quiet", arguments.options.quiet, "Print no remarks on standard error");
}

CLI::App *addList(CLI::App &app, ListArguments &arguments) {
    CLI::App *const command =
        app.add_subcommand("list", "Print the entries of a log, oldest first; needs no lock");
    command->footer(listNotes);
    addLogFile(*command, arguments.options.file);
    addListOrder(*command, arguments.options);
    addListFilter(*command, arguments);
    addListForm(*command, arguments);
    return command;
}

CLI::App *addCheck(CLI::App &app, Arguments &arguments) {
    CLI::App *const command = app.add_subcommand(
        "check", "Say what is wrong with a log file, and save its entries; needs no lock");
    addLogFile(*command, arguments.check.file);
    command
        ->add_option("--salvage", arguments.check.salvage,
                     "Write a sound log of every entry that can be read to the new file NEW")
        ->type_name("NEW")
        ->check(wrongName);
    command->add_flag("--all", arguments.check.all, "Print every finding, however many are alike");
    addOutputForm(command, arguments);
    return command;
}

CLI::App *addStat(CLI::App &app, Arguments &arguments) {
    CLI::App *const command = app.add_subcommand(
        "stat", "Count the entries of a log by severity, event type, source and sensor; needs no "
                "lock");
    addLogFile(*command, arguments.stat.file);
    CLI::Option *const rows =
        command->add_option("-n,--rows", arguments.stat.rows, "Rows of each table; 10 without it")
            ->type_name("N")
            ->check(CLI::NonNegativeNumber);
    command->add_flag("--all", arguments.allRows, "All rows of each table")->excludes(rows);
    addOutputForm(command, arguments);
    return command;
}

CLI::App *addReport(CLI::App &app, Arguments &arguments) {
    CLI::App *const command = app.add_subcommand(
        "report", "Write a log as one HTML page: a timeline, the busiest sensors, the entries; "
                  "needs no lock");
    addLogFile(*command, arguments.report.file);
    command
        ->add_option("-o,--output", arguments.report.output,
                     "The page to write, in the place of one that is there; - for standard output")
        ->type_name("PAGE")
        ->required()
        ->check(wrongName);
    command
        ->add_option("-n,--newest", arguments.report.newest,
                     "Put only the newest N entries into the table; 10000 without it. All are "
                     "counted")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    return command;
}

CLI::App *addInfo(CLI::App &app, Arguments &arguments) {
    CLI::App *const command =
        app.add_subcommand("info", "Print the settings and the fill state of a log; needs no lock");
    addLogFile(*command, arguments.file);
    addOutputForm(command, arguments);
    return command;
}

CLI::App *addConfig(CLI::App &app, Arguments &arguments) {
    CLI::App *const command =
        app.add_subcommand("config", "Print the settings and the syslog map of the configuration");
    addOutputForm(command, arguments);
    return command;
}

// A command that takes a log file and nothing else.
CLI::App *addReader(CLI::App &app, Arguments &arguments, const char *name, const char *what) {
    CLI::App *const command = app.add_subcommand(name, what);
    addLogFile(*command, arguments.file);
    return command;
}

CLI::App *addEvtlog(CLI::App &app) {
    CLI::App *const command = app.add_subcommand(
        "evtlog", "Run one line of the evtlog command on the configured log; without words it "
                  "prints their usage");
    command->fallthrough(false); // its words are its own, "-5" and "/0a" among them
    command->prefix_command();
    return command;
}

// The commands whose arguments were parsed; one of them was given.
struct Commands {
    CLI::App *import;
    CLI::App *export_;
    CLI::App *list;
    CLI::App *info;
    CLI::App *stat;
    CLI::App *report;
    CLI::App *check;
    CLI::App *unlock;
    CLI::App *print;
    CLI::App *dump;
    CLI::App *evtlog;
    CLI::App *shell;
};

[[nodiscard]] std::chrono::milliseconds duration(double seconds) {
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

[[nodiscard]] Status runImport(Arguments &arguments) {
    ImportOptions &import = arguments.import;
    import.form = formOf(arguments.form);
    import.utcOffset = parseUtcOffset(arguments.utcOffset).value_or(0);
    import.oemOrder = arguments.reversedOem ? sel::OemOrder::reversed : sel::OemOrder::wire;
    if (arguments.watch) {
        return watchRecords(arguments.settings, import,
                            {.command = arguments.importWords,
                             .interval = duration(arguments.interval),
                             .timeLimit = duration(arguments.timeLimit)});
    }
    if (arguments.importWords.size() != 1) {
        fail(Status::wrongUsage, "import takes one FILE, not {}; see \"{} --help\"",
             arguments.importWords.size(), programName);
    }
    import.file = arguments.importWords.front();
    return importRecords(arguments.settings, import);
}

[[nodiscard]] Status runCommand(const Commands &commands, Arguments &arguments) {
    if (arguments.utc) {
        useUtc();
    }
    arguments.settings.forward = arguments.syslog.has_value();
    zuSaHpiSyslogStreamSet(arguments.syslog == "stderr" ? stderr : nullptr);
    if (commands.import->parsed()) {
        return runImport(arguments);
    }
    if (commands.export_->parsed()) {
        return exportRecords(arguments.settings, arguments.file);
    }
    if (commands.list->parsed()) {
        return listEntries(arguments.settings, settledOptions(arguments.list));
    }
    if (commands.info->parsed()) {
        return showInfo(arguments.settings, arguments.file, outputFormOf(arguments.outputForm));
    }
    if (commands.stat->parsed()) {
        arguments.stat.form = outputFormOf(arguments.outputForm);
        arguments.stat.rows = arguments.allRows ? allEntries : arguments.stat.rows;
        return showStatistics(arguments.settings, arguments.stat);
    }
    if (commands.report->parsed()) {
        return writeReport(arguments.settings, arguments.report);
    }
    if (commands.check->parsed()) {
        arguments.check.form = outputFormOf(arguments.outputForm);
        return checkLogFile(arguments.settings, arguments.check);
    }
    if (commands.unlock->parsed()) {
        return unlockLog(arguments.settings, arguments.file);
    }
    if (commands.print->parsed()) {
        return printLog(arguments.settings, arguments.file, LogForm::text);
    }
    if (commands.dump->parsed()) {
        return printLog(arguments.settings, arguments.file, LogForm::hex);
    }
    if (commands.evtlog->parsed()) {
        return runEvtlog(arguments.settings, commands.evtlog->remaining());
    }
    if (commands.shell->parsed()) {
        return runShell(arguments.settings);
    }
    return showConfig(arguments.settings, outputFormOf(arguments.outputForm));
}

[[nodiscard]] std::string oneLine(const std::string &text) {
    const std::size_t newline = text.find('\n');
    return newline == std::string::npos ? text : text.substr(0, newline);
}

[[nodiscard]] int parseAndRun(int argumentCount, char **argumentValues) {
    Arguments arguments;
    CLI::App app("Keeps, shows and fills event logs of the HPI standard.", programName);
    addGlobalOptions(app, arguments);
    const Commands commands{
        .import = addImport(app, arguments),
        .export_ = addExport(app, arguments),
        .list = addList(app, arguments.list),
        .info = addInfo(app, arguments),
        .stat = addStat(app, arguments),
        .report = addReport(app, arguments),
        .check = addCheck(app, arguments),
        .unlock = addReader(app, arguments, "unlock",
                            "Remove the lock that a killed process left behind"),
        .print = addReader(app, arguments, "print",
                           "Print all that a log file holds, dead records too; "
                           "needs no lock"),
        .dump = addReader(app, arguments, "dump",
                          "Print the records of a log file in hex; needs no "
                          "lock"),
        .evtlog = addEvtlog(app),
        .shell = app.add_subcommand("shell", "Prompt for lines of the evtlog command")};
    (void)addConfig(app, arguments); // what is left when no other was given
    try {
        app.parse(argumentCount, argumentValues);
    } catch (const CLI::Success &request) { // --help and --version
        return app.exit(request);
    } catch (const CLI::ParseError &error) {
        const bool unknown = app.get_subcommands().empty() && !app.remaining().empty();
        complain(fmt::format("{}; see \"{} --help\"",
                             unknown ? fmt::format("{} is no command", app.remaining().front())
                                     : oneLine(error.what()),
                             programName));
        return static_cast<int>(Status::wrongUsage);
    }
    return static_cast<int>(runCommand(commands, arguments));
}

} // namespace

std::optional<std::int32_t> parseUtcOffset(std::string_view text) {
    if (text == "Z") {
        return 0;
    }
    constexpr std::size_t length = 6; // +hh:mm
    if (text.size() != length || (text[0] != '+' && text[0] != '-') || text[3] != ':') {
        return std::nullopt;
    }
    for (const std::size_t digit : {1, 2, 4, 5}) {
        if (text[digit] < '0' || text[digit] > '9') {
            return std::nullopt;
        }
    }
    const int hours = (text[1] - '0') * 10 + (text[2] - '0');
    const int minutes = (text[4] - '0') * 10 + (text[5] - '0');
    constexpr int furthest = 14; // hours; no zone is further from UTC
    if (minutes >= 60 || hours * 60 + minutes > furthest * 60) {
        return std::nullopt;
    }
    return (text[0] == '-' ? -1 : 1) * (hours * 60 + minutes);
}

int run(int argumentCount, char **arguments) {
    try {
        return parseAndRun(argumentCount, arguments);
    } catch (const Failure &failure) {
        if (*failure.what() != '\0') {
            complain(failure.what());
        }
        return static_cast<int>(failure.status);
    } catch (const std::bad_alloc &) {
        complain("there is not enough memory for this log or file; list fewer entries with -n");
    } catch (const std::exception &error) {
        complain(fmt::format("unexpected failure: {}; please report it", error.what()));
    }
    return static_cast<int>(Status::systemRefused);
}

} // namespace zusahpi::evtlogctl
