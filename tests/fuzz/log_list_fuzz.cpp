// Any file read by the tool as a log: its entries listed and counted, the imported records among
// them taken back, its info shown, and the data of its report written.

#include <string>
#include <utility>

#include <rapidjson/reader.h>

#include "tests/fuzz/harness.h"
#include "tools/evtlogctl/entry_csv.h"
#include "tools/evtlogctl/entry_json.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/journal_json.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/report_data.h"
#include "tools/evtlogctl/sel_mapping.h"
#include "tools/evtlogctl/stat_json.h"
#include "tools/evtlogctl/stat_text.h"

namespace {

using namespace zusahpi;

[[nodiscard]] bool isPrintable(const std::string &text) {
    for (const char letter : text) {
        if (letter < ' ' || letter > '~') {
            return false;
        }
    }
    return true;
}

void requireJson(const std::string &text) {
    rapidjson::StringStream stream(text.c_str());
    rapidjson::BaseReaderHandler<> handler;
    rapidjson::Reader reader;
    fuzz::require(!reader.Parse<rapidjson::kParseValidateEncodingFlag>(stream, handler).IsError(),
                  "what is written as JSON is JSON");
    fuzz::require(text.find('\n') == std::string::npos, "an object is one line of JSON");
}

void requireEveryForm(const EventLogEntryRecord &entry) {
    std::string text;
    evtlogctl::appendEntryJson(text, entry);
    requireJson(text);
    text.clear();
    evtlogctl::appendJournalJson(text, entry);
    requireJson(text);
    text.clear();
    evtlogctl::appendEntryCsv(text, entry);
    fuzz::require(isPrintable(text), "an entry is a line of values");
}

void requireCountable(const evtlogctl::LogFile &file, const evtlogctl::Snapshot &snapshot) {
    evtlogctl::SnapshotReader entries(file, snapshot);
    const evtlogctl::LogCounts counts = evtlogctl::countEntries(entries);
    fuzz::require(counts.entries == snapshot.entries.size(), "every entry is counted");
    const evtlogctl::DescribedLog log{
        .path = file.path(), .fileSize = file.size(), .info = snapshot.info};
    std::string text = evtlogctl::statisticsText(log, counts, {.rows = 3, .width = 80});
    std::erase(text, '\n');
    fuzz::require(isPrintable(text), "counts are printable");
    requireJson(evtlogctl::jsonObject(
        [&](evtlogctl::JsonWriter &out) { evtlogctl::putStatistics(out, log, counts, 3); }));
}

void requireReportable(const evtlogctl::LogFile &file, const evtlogctl::Snapshot &snapshot) {
    std::string data;
    const evtlogctl::Status status = evtlogctl::writeReportData(
        file, snapshot, evtlogctl::allEntries, [&](std::string_view piece) { data += piece; });
    fuzz::require(status == evtlogctl::Status::done, "a sound log is reported whole");
    requireJson(data);
    fuzz::require(data.find('<') == std::string::npos, "no data end the element that holds them");
}

void requireListable(const evtlogctl::LogFile &file, const evtlogctl::Snapshot &log) {
    fuzz::require(isPrintable(log.damage), "what is wrong is told in printable text");
    fuzz::require(!log.damage.empty() || log.entries.size() == log.info.sa.Entries,
                  "a sound log has the entries that it counts");
    evtlogctl::SnapshotReader entries(file, log);
    while (const EventLogEntryRecord *const entry = entries.next()) {
        fuzz::require(isPrintable(evtlogctl::logLine(*entry)), "an entry is a line");
        requireEveryForm(*entry);
        if (const auto record = sel::importedRecord(*entry)) {
            const EventLogAddRecord again = sel::toEvent(*record, {});
            fuzz::require(again.event.EventType == entry->entry.Event.EventType,
                          "what was made from a record is made from it again");
        }
    }
    fuzz::require(entries.overwritten() == 0, "what is at rest is read twice alike");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string path = "/proc/self/fd/" + std::to_string(fuzz::memoryFile({data, size}));
    try {
        const evtlogctl::LogFile file(path);
        const evtlogctl::Snapshot log = evtlogctl::readLog(file);
        requireListable(file, log);
        requireCountable(file, log);
        if (log.damage.empty()) { // which standard error would be told of, each time
            requireReportable(file, log);
        }
        const evtlogctl::Snapshot newest = evtlogctl::readLog(file, 1);
        fuzz::require(newest.entries.size() <= 1, "no more entries than were asked for");
        fuzz::require(log.entries.empty() == newest.entries.empty() || !newest.damage.empty() ||
                          !log.damage.empty(),
                      "the newest entry is there when any is");
        fuzz::require(std::cmp_equal(evtlogctl::readLogInfo(path).fileSize, size),
                      "the file is as long as it is");
    } catch (const evtlogctl::Failure &failure) {
        fuzz::require(isPrintable(failure.what()), "a refusal is one line");
    }
    return 0;
}
