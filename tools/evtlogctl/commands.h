// The commands of the program. Each returns the exit status, and throws Failure when it cannot do
// its work.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/sel_input.h"
#include "tools/evtlogctl/sel_record.h"
#include "tools/evtlogctl/settings.h"

namespace zusahpi::evtlogctl {

inline constexpr int statusDone = 0;
inline constexpr int statusFailed = 1;
inline constexpr int statusWrongUsage = 2;

struct ImportOptions {
    std::string file; // "-": standard input
    sel::Form form = sel::Form::automatic;
    sel::OemOrder oemOrder = sel::OemOrder::wire;
    std::int32_t utcOffset = 0; // minutes
    bool all = false;
    std::string severityTable; // a file; empty: the built-in table
};

[[nodiscard]] int importRecords(const Settings &settings, const ImportOptions &options);

// `file` empty or "-": standard output.
[[nodiscard]] int exportRecords(const Settings &settings, const std::string &file);

enum class ListForm : std::uint8_t {
    line,    // one for each entry
    verbose, // everything, as the library prints it
};

// `file` empty: the configured log.
[[nodiscard]] int listEntries(const Settings &settings, const std::string &file, std::size_t newest,
                              ListForm form);
[[nodiscard]] int showInfo(const Settings &settings, const std::string &file);

[[nodiscard]] int showConfig(const Settings &settings);

enum class LogForm : std::uint8_t { text, hex };

// `file` empty: the configured log.
[[nodiscard]] int printLog(const Settings &settings, const std::string &file, LogForm form);

// One line of the evtlog command on the configured log.
[[nodiscard]] int runEvtlog(const Settings &settings, const std::vector<std::string> &words);

// Lines of the evtlog command from a terminal or from standard input, until the end of it.
[[nodiscard]] int runShell(const Settings &settings);

} // namespace zusahpi::evtlogctl
