// evtlogctl list: a line for each entry, or all that it holds.
#include <cstdio>
#include <string>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/output.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

void printWhole(const EventLogEntryRecord &entry) {
    const auto out = reinterpret_cast<zuSaHpiHandleT>(stdout);
    zuSaHpiPrintEventLogEntry(out, &entry.entry, "");
    if (entry.rpt.ResourceCapabilities != 0) {
        zuSaHpiPrintf(out, "RPT Entry:\n");
        zuSaHpiRptDisplay(out, &entry.rpt, "      ");
    }
    if (entry.rdr.RdrType != SAHPI_NO_RECORD) {
        zuSaHpiPrintf(out, "RDR:\n");
        zuSaHpiRdrDisplay(out, &entry.rdr, "      ", 0);
    }
}

} // namespace

Status listEntries(const Settings &settings, const std::string &file, std::size_t newest,
                   ListForm form) {
    const std::string path = logToRead(settings, file);
    const Snapshot log = readLog(path, newest);
    std::string line;
    for (const EventLogEntryRecord &entry : log.entries) {
        if (form == ListForm::verbose) {
            printWhole(entry);
        } else {
            line = logLine(entry);
            line += '\n';
            writeAll(stdout, line, standardOutput);
        }
    }
    flushAll(stdout, standardOutput);
    if (!log.damage.empty()) {
        complain(fmt::format("{} is damaged: {}; only the entries after that are listed", path,
                             log.damage));
        return Status::damaged;
    }
    return Status::done;
}

} // namespace zusahpi::evtlogctl
