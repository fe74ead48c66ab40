// evtlogctl import: from a file of records to entries of the log.
//
// What is wrong with the file is known and reported before the log is touched. Records that the log
// already holds are passed over, each as often as the log holds it.
#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/interruption.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/progress.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t mostProblemsShown = 5;
constexpr int evenWhenDisabled = 1; // the import is the user's wish, not an event that comes in

// How often the log holds each record.
using Known = std::map<sel::Record, std::size_t>;

[[nodiscard]] Known knownRecords(const LogSetup &setup) {
    Known known;
    if (setup.block->fileEnabled == 0) {
        return known;
    }
    const LogFile file(setup.path);
    const Snapshot log = readLog(file);
    if (!log.damage.empty()) {
        fail(Status::damaged,
             "{} is damaged ({}), so it cannot be told which records it holds; add them all with "
             "--all",
             setup.path, log.damage);
    }
    SnapshotReader entries(file, log);
    while (const EventLogEntryRecord *const entry = entries.next()) {
        if (const auto record = sel::importedRecord(*entry)) {
            ++known[*record];
        }
    }
    return known;
}

[[nodiscard]] bool takeKnown(Known &known, const sel::Record &record) {
    const auto found = known.find(record);
    if (found == known.end() || found->second == 0) {
        return false;
    }
    --found->second;
    return true;
}

void reportProblems(const std::string &file, const sel::Input &input) {
    for (std::size_t i = 0; i < std::min(input.problems.size(), mostProblemsShown); ++i) {
        const sel::Problem &problem = input.problems[i];
        const std::string line =
            problem.line == 0 ? std::string() : fmt::format(" (line {})", problem.line);
        complain(fmt::format("{}: at offset {}{}: {}; left out, all else was read", file,
                             problem.offset, line, problem.what));
    }
    if (input.problems.size() > mostProblemsShown) {
        complain(fmt::format("{}: {} more places like these", file,
                             input.problems.size() - mostProblemsShown));
    }
}

void hintAtOemOrder(const std::string &file, const sel::Input &input, sel::OemOrder order) {
    const sel::OrderVotes votes = sel::orderVotes(input.records);
    const bool wire = order == sel::OemOrder::wire;
    const std::size_t chosen = wire ? votes.wire : votes.reversed;
    const std::size_t other = wire ? votes.reversed : votes.wire;
    if (other > chosen) {
        complain(fmt::format("{}: the manufacturer ids of {} OEM records make sense only in the "
                             "other byte order; consider importing {} --ipmitool-order",
                             file, other, wire ? "with" : "without"));
    }
}

[[nodiscard]] sel::Input readInput(const ImportOptions &options) {
    const std::string data = readAll(options.file);
    sel::Input input = sel::readRecords(data, options.form);
    if (input.form == sel::Form::text && input.records.empty() && input.problems.empty() &&
        data.find_first_not_of(" \t\r\n") != std::string::npos) {
        fail(Status::findings,
             "{}: no line holds the sixteen bytes of a record; name a file of SEL records",
             options.file);
    }
    return input;
}

[[nodiscard]] sel::SeverityTable readSeverities(const std::string &file) {
    return file.empty() ? sel::builtInSeverities() : sel::parseSeverities(readAll(file), file);
}

struct Counts {
    std::size_t added = 0;
    std::size_t known = 0;
    bool stopped = false;
};

void addRecord(const sel::Record &record, const sel::Mapping &mapping, const Counts &counts,
               const std::string &path) {
    const EventLogAddRecord entry = sel::toEvent(record, mapping);
    const SaErrorT result = zuSaHpiEventLogEntryAdd(&entry, evenWhenDisabled);
    if (result == SA_ERR_HPI_OUT_OF_SPACE) {
        fail(Status::findings,
             "{} is full and takes no more entries, {} were added; give it a greater Size or "
             "another Overflow in the configuration",
             path, counts.added);
    }
    if (result != SA_OK) {
        char unknown[ZUSAHPI_RETURN_CODE_SIZE];
        fail(result == SA_ERR_HPI_INTERNAL_ERROR ? Status::damaged : Status::systemRefused,
             "{} took {} entries, then failed with {}; check the disk and the log", path,
             counts.added, zuSaHpiReturnCode(result, unknown));
    }
}

[[nodiscard]] Counts addRecords(const sel::Input &input, const sel::Mapping &mapping, Known known,
                                const std::string &path) {
    Counts counts;
    Progress progress(input.records.size());
    for (const sel::Record &record : input.records) {
        if (interrupted()) {
            counts.stopped = true;
            break;
        }
        if (takeKnown(known, record)) {
            ++counts.known;
        } else {
            addRecord(record, mapping, counts, path);
            ++counts.added;
        }
        progress.show(counts.added + counts.known);
    }
    return counts;
}

[[nodiscard]] std::size_t entriesOfLog() {
    SaHpiEventLogInfoT info{};
    (void)zuSaHpiEventLogInfoGet(&info); // cannot fail
    return info.Entries;
}

void summarise(const std::string &file, const sel::Input &input, const Counts &counts,
               std::size_t lost) {
    std::string line = fmt::format("{}: {} records read, {} added, {} already known", file,
                                   input.records.size(), counts.added, counts.known);
    if (lost > 0) {
        line += fmt::format(", {} entries of the full log overwritten", lost);
    }
    writeAll(stdout, line + "\n", standardOutput);
    flushAll(stdout, standardOutput);
}

} // namespace

Status importRecords(const Settings &settings, const ImportOptions &options) {
    const sel::SeverityTable severities = readSeverities(options.severityTable);
    const sel::Input input = readInput(options);
    hintAtOemOrder(options.file, input, options.oemOrder);

    const LogSetup setup = configure(settings);
    noteInterruptions();
    startLog(setup);
    const Known known = options.all ? Known{} : knownRecords(setup);
    const std::size_t before = entriesOfLog();
    const sel::Mapping mapping{
        .utcOffset = options.utcOffset, .oemOrder = options.oemOrder, .severities = &severities};
    const Counts counts = addRecords(input, mapping, known, setup.path);
    const bool stored = setup.block->fileEnabled != 0;
    summarise(options.file, input, counts, stored ? before + counts.added - entriesOfLog() : 0);
    reportProblems(options.file, input);
    if (counts.stopped) {
        complain(fmt::format("{}: interrupted; import it again to add the rest", options.file));
    }
    return counts.stopped || !input.problems.empty() ? Status::findings : Status::done;
}

} // namespace zusahpi::evtlogctl
