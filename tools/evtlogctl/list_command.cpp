// evtlogctl list: a line for each entry.
#include <cstdio>
#include <string>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/output.h"

namespace zusahpi::evtlogctl {

int listEntries(const Settings &settings, const std::string &file, std::size_t newest) {
    const std::string path = logToRead(settings, file);
    const Snapshot log = readLog(path, newest);
    for (const EventLogEntryRecord &entry : log.entries) {
        writeAll(stdout, logLine(entry) + "\n", standardOutput);
    }
    flushAll(stdout, standardOutput);
    if (!log.damage.empty()) {
        complain(fmt::format("{} is damaged: {}; only the entries after that are listed", path,
                             log.damage));
        return statusFailed;
    }
    return statusDone;
}

} // namespace zusahpi::evtlogctl
