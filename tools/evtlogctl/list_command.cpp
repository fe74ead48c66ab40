// evtlogctl list: the entries of a log as it stands; what comes later is follow.cpp's.
#include <algorithm>
#include <cstdio>
#include <optional>

#include <fmt/format.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/entry_printer.h"
#include "tools/evtlogctl/entry_selection.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/follow.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/terminal.h"

namespace zusahpi::evtlogctl {
namespace {

// Where only entries may stand on standard output, the cursor goes beside it.
void showCursor(const std::optional<Cursor> &cursor, ListForm form) {
    if (cursor) {
        std::FILE *const to = isForPeople(form) ? stdout : stderr;
        writeAll(to, fmt::format("-- cursor: {}\n", cursorText(*cursor)), "the cursor");
        flushAll(to, "the cursor");
    }
}

[[nodiscard]] std::size_t printEntries(SnapshotReader &entries, const EntryFilter &filter,
                                       EntryPrinter &printer) {
    std::size_t printed = 0;
    while (const EventLogEntryRecord *const entry = entries.next()) {
        if (matches(filter, *entry)) {
            printer.print(*entry);
            ++printed;
        }
    }
    printer.flush();
    return printed;
}

[[nodiscard]] Status listOnce(const std::string &path, const ListOptions &options) {
    const LogFile file(path);
    Snapshot log = readLog(file, entriesToRead(options));
    const std::optional<Cursor> cursor = newestCursor(file, log);
    const EntryFilter filter = selectEntries(file, log, options);
    if (options.reverse) {
        std::reverse(log.entries.begin(), log.entries.end());
    }
    SnapshotReader entries(file, log);
    EntryPrinter printer(options.form, wantsColours());
    std::size_t printed = 0;
    {
        std::optional<Pager> pager;
        if (!options.noPager) {
            pager.emplace(options.pagerEnd);
        }
        printed = printEntries(entries, filter, printer);
        if (options.showCursor) {
            showCursor(cursor ? cursor : options.after, options.form);
        }
    }
    const Status status = reportReading(file, log, entries, "are listed");
    const bool anyWanted = isEmpty(options.filter) && !options.after;
    if (status != Status::done || printed > 0 || anyWanted) {
        return status;
    }
    if (!options.quiet) {
        complain(fmt::format("{}: no entry fits", path));
    }
    return Status::findings;
}

} // namespace

Status listEntries(const Settings &settings, const ListOptions &options) {
    const std::string path = logToRead(settings, options.file);
    return options.follow ? followLog(path, options) : listOnce(path, options);
}

} // namespace zusahpi::evtlogctl
