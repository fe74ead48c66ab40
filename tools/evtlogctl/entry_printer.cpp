// Lines are collected, so that there are few writes.
#include "tools/evtlogctl/entry_printer.h"

#include <cstdio>

#include "tools/evtlogctl/entry_csv.h"
#include "tools/evtlogctl/entry_json.h"
#include "tools/evtlogctl/journal_json.h"
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

void appendEntry(std::string &lines, const EventLogEntryRecord &entry, ListForm form,
                 bool coloured) {
    switch (form) {
    case ListForm::json:
        appendEntryJson(lines, entry);
        break;
    case ListForm::jsonJournal:
        appendJournalJson(lines, entry);
        break;
    case ListForm::message:
        appendMessage(lines, entry);
        break;
    case ListForm::csv:
        appendEntryCsv(lines, entry);
        break;
    case ListForm::lineIso:
        appendLogLine(lines, entry, {.precision = Precision::nanoseconds, .coloured = coloured});
        break;
    default:
        appendLogLine(lines, entry, {.coloured = coloured});
        break;
    }
    lines += '\n';
}

} // namespace

EntryPrinter::EntryPrinter(ListForm form, bool coloured) : form_(form), coloured_(coloured) {
    if (form == ListForm::csv) {
        lines_ = csvHeader();
    }
}

void EntryPrinter::print(const EventLogEntryRecord &entry) {
    if (form_ == ListForm::verbose) {
        printWhole(entry);
        return;
    }
    appendEntry(lines_, entry, form_, coloured_);
    if (lines_.size() >= enoughToWrite) {
        writeAll(stdout, lines_, standardOutput);
        lines_.clear();
    }
}

void EntryPrinter::flush() {
    writeAll(stdout, lines_, standardOutput);
    lines_.clear();
    flushAll(stdout, standardOutput);
}

} // namespace zusahpi::evtlogctl
