// Reading the sample records of the tests.

#include "tests/evtlogctl/sel_samples.h"

#include <cstring>
#include <stdexcept>

#include "tests/support/files.h"
#include "tools/evtlogctl/sel_input.h"

namespace sel_samples {

Record record(std::string_view hex) {
    const auto found = zusahpi::sel::recordInLine(hex);
    if (!found) {
        throw std::runtime_error("no record: " + std::string(hex));
    }
    return *found;
}

std::string dataFile(const std::string &name) {
    return std::string(ZUSAHPI_TEST_DATA) + "/evtlogctl/data/" + name;
}

std::string exampleFile(const std::string &name) {
    return std::string(ZUSAHPI_TEST_DATA) + "/../examples/" + name;
}

std::vector<Record> recordsOf(const std::string &path) {
    using namespace zusahpi::sel;
    return readRecords(test_support::readFile(path), Form::automatic).records;
}

std::string bytesOf(const std::vector<Record> &records) {
    std::string bytes;
    for (const Record &each : records) {
        bytes.append(each.bytes.begin(), each.bytes.end());
    }
    return bytes;
}

std::vector<std::string> sampleFiles() {
    return {exampleFile("server.sel"), dataFile("session-audit-10.sel"), dataFile("misc-30.sel")};
}

EventLogEntryRecord entryOf(const EventLogAddRecord &added, std::uint32_t id) {
    EventLogEntryRecord entry;
    std::memset(&entry, 0, sizeof entry);
    entry.prev = ZUSAHPI_EL_NO_ENTRY;
    entry.next = ZUSAHPI_EL_NO_ENTRY;
    entry.entry.EntryId = id;
    entry.entry.Timestamp = loggedAt;
    std::memcpy(&entry.entry.Event, &added.event, sizeof added.event);
    std::memcpy(&entry.rpt, &added.rpt, sizeof added.rpt);
    std::memcpy(&entry.rdr, &added.rdr, sizeof added.rdr);
    return entry;
}

EventLogEntryRecord entryOf(const Record &record, std::uint32_t id,
                            const zusahpi::sel::Mapping &mapping) {
    return entryOf(zusahpi::sel::toEvent(record, mapping), id);
}

Record randomRecord(std::mt19937_64 &random) {
    Record result;
    const std::uint64_t halves[2] = {random(), random()};
    std::memcpy(result.bytes.data(), halves, sizeof halves);
    return result;
}

std::size_t below(std::size_t end, std::mt19937_64 &random) {
    return static_cast<std::size_t>(random() % end);
}

} // namespace sel_samples
