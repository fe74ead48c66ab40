// The log is read twice: once for the counts, which say what time it spans, and once for the
// timeline and the entries, which are written while they are read. Memory does not depend on how
// many entries are written.
//
//   Stat          as "evtlogctl stat -o json" has it
//   Severities    the known ones, the most severe first: Severity, Name
//   Timeline      Begin and Width in milliseconds, Counts: for each slot a number for each known
//                 severity and one for all others
//   Rows          arrays of: number, time (milliseconds, or a text where it is no time of day),
//                 severity, source, what happened
//   RowsLeftOut, Notices, Program, Made
#include "tools/evtlogctl/report_data.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/local_time.h"
#include "tools/evtlogctl/log_line.h"
#include "tools/evtlogctl/report_timeline.h"
#include "tools/evtlogctl/sel_severity.h"
#include "tools/evtlogctl/stat_json.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t rankedGroups = 10;
constexpr std::size_t enoughToWrite = 65'536; // bytes
constexpr SaHpiTimeT nanosecondsOfAMillisecond = 1'000'000;

// JSON on its way to the page.
struct Data {
    explicit Data(const Sink &sink) : to(sink), out(buffer) {
    }
    const Sink &to;
    rapidjson::StringBuffer buffer;
    JsonWriter out;
};

// What was written so far. In JSON a '<' stands in texts alone, where it may be written as its
// number.
void passOn(Data &data) {
    std::string text;
    for (const char letter : std::string_view(data.buffer.GetString(), data.buffer.GetSize())) {
        if (letter == '<') {
            text += "\\u003C";
        } else {
            text += letter;
        }
    }
    data.to(text);
    data.buffer.Clear();
}

void putMilliseconds(JsonWriter &out, SaHpiTimeT time) {
    out.Int64(time / nanosecondsOfAMillisecond);
}

// When it happened, or was logged where that is not known, as the list of entries has it.
void putRowTime(JsonWriter &out, const EventLogEntryRecord &entry) {
    const SaHpiTimeT time = shownTime(entry);
    if (time > SAHPI_TIME_MAX_RELATIVE) {
        putMilliseconds(out, time);
    } else {
        putString(out, timeText(time));
    }
}

void putRow(JsonWriter &out, const EventLogEntryRecord &entry) {
    static std::string text; // keeps its room from row to row
    out.StartArray();
    out.Uint(entry.entry.EntryId);
    putRowTime(out, entry);
    out.Uint(static_cast<std::uint32_t>(entry.entry.Event.Severity));
    text.clear();
    appendSource(text, entry);
    putString(out, text);
    text.clear();
    appendMessage(text, entry);
    if (entry.entry.Event.Timestamp == SAHPI_TIME_UNSPECIFIED) {
        text += timeOfLoggingNote;
    }
    putString(out, text);
    out.EndArray();
}

void putSeverities(JsonWriter &out) {
    putKey(out, "Severities");
    out.StartArray();
    for (const SaHpiSeverityT severity : sel::severitiesByRank) {
        out.StartObject();
        putNumber(out, "Severity", static_cast<std::uint32_t>(severity));
        putText(out, "Name", sel::severityName(severity));
        out.EndObject();
    }
    out.EndArray();
}

void putTimeline(JsonWriter &out, const Timeline &timeline) {
    putKey(out, "Begin");
    putMilliseconds(out, timeline.begin);
    putKey(out, "Width");
    putMilliseconds(out, timeline.width);
    putKey(out, "Counts");
    out.StartArray();
    for (const SlotCounts &slot : timeline.slots) {
        out.StartArray();
        for (const std::uint32_t count : slot) {
            out.Uint(count);
        }
        out.EndArray();
    }
    out.EndArray();
}

// What a reader of the page must know about the log.
void putNotices(JsonWriter &out, const Snapshot &snapshot, std::size_t overwritten) {
    putKey(out, "Notices");
    out.StartArray();
    if (!snapshot.damage.empty()) {
        putString(out, fmt::format("The log is damaged: {}. Only the entries after that are here.",
                                   snapshot.damage));
    }
    if (overwritten > 0) {
        putString(out, fmt::format("Another program overwrote {} entries while the log was read; "
                                   "they are left out.",
                                   overwritten));
    }
    out.EndArray();
}

// All entries go into the timeline, those behind the first `leftOut` into the table too.
void writeRows(Data &data, SnapshotReader &entries, Timeline &timeline, std::size_t leftOut) {
    std::size_t place = 0;
    putKey(data.out, "Rows");
    data.out.StartArray();
    while (const EventLogEntryRecord *const entry = entries.next()) {
        addToTimeline(timeline, entry->entry.Event);
        if (place++ + entries.overwritten() >= leftOut) {
            putRow(data.out, *entry);
        }
        if (data.buffer.GetSize() >= enoughToWrite) {
            passOn(data);
        }
    }
    data.out.EndArray();
}

} // namespace

Status writeReportData(const LogFile &file, const Snapshot &snapshot, std::size_t newest,
                       const Sink &to) {
    SnapshotReader counted(file, snapshot);
    const LogCounts counts = countEntries(counted);
    const DescribedLog log{.path = file.path(), .fileSize = file.size(), .info = snapshot.info};
    Timeline timeline = timelineOver(counts.times);
    const std::size_t leftOut = snapshot.entries.size() - std::min(snapshot.entries.size(), newest);
    SnapshotReader entries(file, snapshot);
    Data data(to);
    JsonWriter &out = data.out;
    out.StartObject();
    putText(out, "Program", fmt::format("{} {}", programName, ZUSAHPI_UTIL_VERSION));
    putKey(out, "Made");
    putMilliseconds(out, zuSaHpiGetTimeofDay());
    putSeverities(out);
    putKey(out, "Stat");
    out.StartObject();
    putStatistics(out, log, counts, rankedGroups);
    out.EndObject();
    putNumber(out, "RowsLeftOut", leftOut);
    writeRows(data, entries, timeline, leftOut);
    putObject(out, "Timeline", putTimeline, timeline);
    putNotices(out, snapshot, entries.overwritten());
    out.EndObject();
    passOn(data);
    return reportReading(file, snapshot, entries, "are in the report");
}

} // namespace zusahpi::evtlogctl
