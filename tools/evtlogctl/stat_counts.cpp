// Counting of entries.
#include "tools/evtlogctl/stat_counts.h"

#include <algorithm>
#include <string_view>
#include <tuple>

#include "tools/evtlogctl/log_line.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr double nanosecondsOfADay = 86'400e9;

[[nodiscard]] bool isTimeOfDay(SaHpiTimeT time) {
    return time > SAHPI_TIME_MAX_RELATIVE;
}

void addTime(EventTimes &times, SaHpiTimeT time) {
    if (!isTimeOfDay(time)) {
        return;
    }
    times.first = times.events == 0 ? time : std::min(times.first, time);
    times.last = times.events == 0 ? time : std::max(times.last, time);
    ++times.events;
}

// What an entry adds to its group, and what the group is called.
struct Membership {
    std::uint32_t value = 0;
    std::string_view source;
    std::string_view sensor;
};

void addTo(Tally &tally, const Membership &group, SaHpiTimeT time) {
    static std::string key; // keeps its room from entry to entry
    key.assign(group.source).append(1, '\n').append(group.sensor).append(1, '\n');
    key.append(std::to_string(group.value));
    auto found = tally.groups.find(key);
    if (found == tally.groups.end()) {
        if (tally.groups.size() >= mostGroups) {
            ++tally.entriesBeyond;
            return;
        }
        found = tally.groups
                    .emplace(key, CountedGroup{.value = group.value,
                                               .source = std::string(group.source),
                                               .sensor = std::string(group.sensor),
                                               .entries = 0,
                                               .times = {}})
                    .first;
    }
    ++found->second.entries;
    addTime(found->second.times, time);
}

void countEntry(LogCounts &counts, const EventLogEntryRecord &entry) {
    const SaHpiEventT &event = entry.entry.Event;
    const SaHpiTimeT time = event.Timestamp;
    ++counts.entries;
    counts.untimed += time == SAHPI_TIME_UNSPECIFIED ? 1 : 0;
    counts.relative += time != SAHPI_TIME_UNSPECIFIED && !isTimeOfDay(time) ? 1 : 0;
    addTime(counts.times, time);
    addTo(counts.severities, {static_cast<std::uint32_t>(event.Severity), {}, {}}, time);
    addTo(counts.eventTypes, {static_cast<std::uint32_t>(event.EventType), {}, {}}, time);
    static std::string source;
    static std::string sensor;
    source.clear();
    sensor.clear();
    appendSource(source, entry);
    appendSensorName(sensor, entry);
    addTo(counts.sources, {0, source, {}}, time);
    if (!sensor.empty()) {
        addTo(counts.sensors, {0, source, sensor}, time);
    }
}

} // namespace

LogCounts countEntries(SnapshotReader &entries) {
    LogCounts counts;
    while (const EventLogEntryRecord *const entry = entries.next()) {
        countEntry(counts, *entry);
    }
    return counts;
}

std::vector<const CountedGroup *> busiestFirst(const Tally &tally) {
    std::vector<const CountedGroup *> groups;
    groups.reserve(tally.groups.size());
    for (const auto &[key, group] : tally.groups) {
        groups.push_back(&group);
    }
    std::sort(groups.begin(), groups.end(), [](const CountedGroup *a, const CountedGroup *b) {
        return std::tie(b->entries, a->value, a->source, a->sensor) <
               std::tie(a->entries, b->value, b->source, b->sensor);
    });
    return groups;
}

double daysOf(const EventTimes &times) {
    return static_cast<double>(times.last - times.first) / nanosecondsOfADay;
}

std::optional<double> perDay(const EventTimes &group, const EventTimes &whole) {
    if (whole.last == whole.first) {
        return std::nullopt;
    }
    return static_cast<double>(group.events) / daysOf(whole);
}

} // namespace zusahpi::evtlogctl
