// Any file as a System Event Log, in each form: its records become events, the events lines, and
// the events the very records again. The same bytes are tried as a severity table.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/fuzz/harness.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/sel_input.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace {

using namespace zusahpi;

constexpr std::size_t mostMapped = 3;

[[nodiscard]] EventLogEntryRecord entryOf(const EventLogAddRecord &added) {
    EventLogEntryRecord entry;
    std::memset(&entry, 0, sizeof entry);
    entry.entry.EntryId = 1;
    entry.entry.Event = added.event;
    entry.rpt = added.rpt;
    entry.rdr = added.rdr;
    return entry;
}

void requireOneLine(const std::string &text) {
    for (const char letter : text) {
        fuzz::require(letter >= ' ' && letter <= '~', "a line is printable");
    }
}

void requireKept(const sel::Record &record, const sel::Mapping &mapping) {
    const EventLogEntryRecord entry = entryOf(sel::toEvent(record, mapping));
    fuzz::require(sel::importedRecord(entry) == record, "an event gives its record back");
    requireOneLine(evtlogctl::logLine(entry));
}

// The records that the bytes hold in that form.
[[nodiscard]] std::vector<sel::Record> importAs(sel::Form form, std::string_view text) {
    const sel::Input input = sel::readRecords(text, form);
    fuzz::require(input.form == form, "a form that was asked for is used");
    fuzz::require(input.records.size() * sel::recordSize <= text.size(), "no record is invented");
    for (const sel::Problem &problem : input.problems) {
        fuzz::require(problem.offset < text.size(), "a problem lies in the file");
        requireOneLine(problem.what);
    }
    constexpr std::int32_t offsets[] = {0, 120, -720, 840};
    const std::int32_t offset = offsets[text.size() % std::size(offsets)];
    // Each is mapped by itself, so that a few are as good as all.
    for (std::size_t i = 0; i < std::min(input.records.size(), mostMapped); ++i) {
        requireKept(input.records[i], {.utcOffset = offset});
        requireKept(input.records[i], {.utcOffset = offset, .oemOrder = sel::OemOrder::reversed});
    }
    (void)sel::orderVotes(input.records); // must come to an end
    return input.records;
}

void readTable(std::string_view text) {
    try {
        const sel::SeverityTable table = sel::parseSeverities(text, "table");
        fuzz::require(sel::parseSeverities(sel::severityText(table), "again") == table,
                      "a table reads back as it was");
    } catch (const evtlogctl::Failure &failure) {
        requireOneLine(failure.what());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Memory<char> bytes = fuzz::zeros<char>(size);
    if (size > 0) {
        std::memcpy(bytes.get(), data, size);
    }
    const std::string_view text(bytes.get(), size);
    const std::vector<sel::Record> raw = importAs(sel::Form::raw, text);
    const std::vector<sel::Record> lines = importAs(sel::Form::text, text);
    const sel::Input either = sel::readRecords(text, sel::Form::automatic);
    fuzz::require(either.records == (either.form == sel::Form::raw ? raw : lines),
                  "the form that is guessed gives what it gives when it is asked for");
    readTable(text);
    return 0;
}
