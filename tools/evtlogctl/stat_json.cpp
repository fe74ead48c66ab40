// Counts as JSON.
#include "tools/evtlogctl/stat_json.h"

#include <algorithm>

#include "constants/type_ids.h"

namespace zusahpi::evtlogctl {
namespace {

void putMoment(JsonWriter &out, std::string_view name, const EventTimes &times, SaHpiTimeT time) {
    if (times.events > 0) {
        putTime(out, name, time);
        return;
    }
    putNull(out, name);
    putKey(out, name, "Time");
    out.Null();
}

void putTimes(JsonWriter &out, const EventTimes &times, const EventTimes &whole) {
    putNumber(out, "TimedEntries", times.events);
    putMoment(out, "First", times, times.first);
    putMoment(out, "Last", times, times.last);
    putKey(out, "PerDay");
    if (const auto rate = perDay(times, whole)) {
        out.Double(*rate);
    } else {
        out.Null();
    }
}

// `putNames` writes the members that name a group.
template <typename PutNames>
void putTally(JsonWriter &out, std::string_view name, const Tally &tally, const LogCounts &counts,
              std::size_t rows, PutNames putNames) {
    const std::vector<const CountedGroup *> groups = busiestFirst(tally);
    const std::size_t shown = std::min(rows, groups.size());
    std::size_t entriesLeftOut = tally.entriesBeyond;
    putKey(out, name);
    out.StartObject();
    putKey(out, "Groups");
    out.StartArray();
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (i >= shown) {
            entriesLeftOut += groups[i]->entries;
            continue;
        }
        out.StartObject();
        putNames(*groups[i]);
        putNumber(out, "Entries", groups[i]->entries);
        putTimes(out, groups[i]->times, counts.times);
        out.EndObject();
    }
    out.EndArray();
    putNumber(out, "GroupsLeftOut", groups.size() - shown);
    putNumber(out, "EntriesLeftOut", entriesLeftOut);
    putNumber(out, "EntriesBeyondGroups", tally.entriesBeyond);
    out.EndObject();
}

} // namespace

void putStatistics(JsonWriter &out, const DescribedLog &log, const LogCounts &counts,
                   std::size_t rows) {
    putObject(out, "Info", putInfo, log);
    putNumber(out, "Counted", counts.entries);
    putNumber(out, "RelativeEntries", counts.relative);
    putNumber(out, "UntimedEntries", counts.untimed);
    putTimes(out, counts.times, counts.times);
    putTally(out, "Severities", counts.severities, counts, rows, [&](const CountedGroup &group) {
        putConstant(out, "Severity", group.value, type_id::severity);
    });
    putTally(out, "EventTypes", counts.eventTypes, counts, rows, [&](const CountedGroup &group) {
        putConstant(out, "EventType", group.value, type_id::eventType);
    });
    putTally(out, "Sources", counts.sources, counts, rows,
             [&](const CountedGroup &group) { putText(out, "Source", group.source); });
    putTally(out, "Sensors", counts.sensors, counts, rows, [&](const CountedGroup &group) {
        putText(out, "Source", group.source);
        putText(out, "Sensor", group.sensor);
    });
}

} // namespace zusahpi::evtlogctl
