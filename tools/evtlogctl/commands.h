// The commands of the program. Each returns the exit status, and throws Failure when it cannot do
// its work.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/evtlogctl/list_options.h"
#include "tools/evtlogctl/sel_input.h"
#include "tools/evtlogctl/sel_record.h"
#include "tools/evtlogctl/settings.h"
#include "tools/evtlogctl/status.h"

namespace zusahpi::evtlogctl {

struct ImportOptions {
    std::string file; // "-": standard input
    sel::Form form = sel::Form::automatic;
    sel::OemOrder oemOrder = sel::OemOrder::wire;
    std::int32_t utcOffset = 0; // minutes
    bool all = false;
    std::string severityTable; // a file; empty: the built-in table
    bool quiet = false;        // no line for what was added
};

[[nodiscard]] Status importRecords(const Settings &settings, const ImportOptions &options);

struct WatchOptions {
    std::vector<std::string> command; // its program and its words
    std::chrono::milliseconds interval{60'000};
    std::chrono::milliseconds timeLimit{300'000};
};

// Imports what a command prints, again and again, until the process is asked to end. The file of
// `import` does not count.
[[nodiscard]] Status watchRecords(const Settings &settings, const ImportOptions &import,
                                  const WatchOptions &watch);

// `file` empty or "-": standard output.
[[nodiscard]] Status exportRecords(const Settings &settings, const std::string &file);

[[nodiscard]] Status listEntries(const Settings &settings, const ListOptions &options);

// Of a command that reports on something as a whole.
enum class OutputForm : std::uint8_t { text, json };

// `file` empty: the configured log.
[[nodiscard]] Status showInfo(const Settings &settings, const std::string &file, OutputForm form);

[[nodiscard]] Status showConfig(const Settings &settings, OutputForm form);

struct StatOptions {
    std::string file;      // empty: the configured log
    std::size_t rows = 10; // of each table
    OutputForm form = OutputForm::text;
};
[[nodiscard]] Status showStatistics(const Settings &settings, const StatOptions &options);

struct PageOptions {
    std::string file;            // empty: the configured log
    std::string output;          // the page; "-": standard output
    std::size_t newest = 10'000; // entries in the page's table
};
[[nodiscard]] Status writeReport(const Settings &settings, const PageOptions &options);

enum class LogForm : std::uint8_t { text, hex };

struct CheckOptions {
    std::string file;    // empty: the configured log
    std::string salvage; // the file to make of what can be read; empty: none
    bool all = false;    // every finding, however many are alike
    OutputForm form = OutputForm::text;
};
[[nodiscard]] Status checkLogFile(const Settings &settings, const CheckOptions &options);

// `file` empty: the configured log.
[[nodiscard]] Status unlockLog(const Settings &settings, const std::string &file);

// `file` empty: the configured log.
[[nodiscard]] Status printLog(const Settings &settings, const std::string &file, LogForm form);

// One line of the evtlog command on the configured log.
[[nodiscard]] Status runEvtlog(const Settings &settings, const std::vector<std::string> &words);

// Lines of the evtlog command from a terminal or from standard input, until the end of it.
[[nodiscard]] Status runShell(const Settings &settings);

} // namespace zusahpi::evtlogctl
