// evtlogctl import: from a file of records to entries of the log.
//
// What is wrong with the file is known and reported before the log is touched. Records that the log
// already holds are passed over, each as often as the log holds it.
#include <algorithm>
#include <string>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/import_steps.h"
#include "tools/evtlogctl/interruption.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/progress.h"
#include "tools/evtlogctl/sel_counts.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t mostProblemsShown = 5;

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

struct Outcome {
    ImportCounts counts;
    bool stopped = false;
};

[[nodiscard]] Outcome addRecords(const sel::Input &input, const sel::Mapping &mapping,
                                 sel::Counts known, const std::string &path) {
    Outcome outcome;
    ImportCounts &counts = outcome.counts;
    counts.read = input.records.size();
    Progress progress(counts.read);
    for (const sel::Record &record : input.records) {
        if (interrupted()) {
            outcome.stopped = true;
            break;
        }
        if (sel::take(known, record)) {
            ++counts.known;
        } else {
            addRecord(record, mapping, counts.added, path);
            ++counts.added;
        }
        progress.show(counts.added + counts.known);
    }
    return outcome;
}

} // namespace

Status importRecords(const Settings &settings, const ImportOptions &options) {
    const sel::SeverityTable severities = readSeverities(options.severityTable);
    const sel::Input input = readInput(options);
    (void)hintAtOemOrder(options.file, input.records, options.oemOrder); // the import goes on

    const LogSetup setup = configure(settings);
    noteInterruptions();
    startLog(setup);
    const sel::Counts known = options.all ? sel::Counts{} : sel::countsOf(recordsOfLog(setup));
    const std::size_t before = entriesOfLog();
    const sel::Mapping mapping{
        .utcOffset = options.utcOffset, .oemOrder = options.oemOrder, .severities = &severities};
    Outcome outcome = addRecords(input, mapping, known, setup.path);
    if (setup.block->fileEnabled != 0) {
        outcome.counts.lost = before + outcome.counts.added - entriesOfLog();
    }
    if (!options.quiet) {
        summarise(options.file, outcome.counts);
    }
    reportProblems(options.file, input);
    if (outcome.stopped) {
        complain(fmt::format("{}: interrupted; import it again to add the rest", options.file));
    }
    return outcome.stopped || !input.problems.empty() ? Status::findings : Status::done;
}

} // namespace zusahpi::evtlogctl
