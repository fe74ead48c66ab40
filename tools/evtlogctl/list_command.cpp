// evtlogctl list: a line for each entry, or all that it holds.
#include <cstdio>
#include <string>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/entry_json.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/output.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t enoughToWrite = 32768; // bytes

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

Status listEntries(const Settings &settings, const std::string &name, std::size_t newest,
                   ListForm form) {
    const LogFile file(logToRead(settings, name));
    const Snapshot log = readLog(file, newest);
    SnapshotReader entries(file, log);
    std::string lines;
    while (const EventLogEntryRecord *const entry = entries.next()) {
        switch (form) {
        case ListForm::verbose:
            printWhole(*entry);
            continue;
        case ListForm::json:
            appendEntryJson(lines, *entry);
            break;
        case ListForm::line:
            appendLogLine(lines, *entry);
            break;
        }
        lines += '\n';
        if (lines.size() >= enoughToWrite) {
            writeAll(stdout, lines, standardOutput);
            lines.clear();
        }
    }
    writeAll(stdout, lines, standardOutput);
    flushAll(stdout, standardOutput);
    return reportReading(file, log, entries, "are listed");
}

} // namespace zusahpi::evtlogctl
