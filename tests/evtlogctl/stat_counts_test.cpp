// Goal: entries are counted by severity, event type, source and sensor, with the first and the last
// time of day among them; no log makes the counts take more than a bounded memory.
#include "tools/evtlogctl/stat_counts.h"

#include <cstring>

#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/support/files.h"
#include "tests/support/times.h"

namespace {

using times::day;
using namespace zusahpi;
using namespace zusahpi::evtlogctl;

constexpr SaHpiTimeT begin = 1'700'000'000'000'000'000;

EventLogEntryRecord entryOf(SaHpiTimeT time, std::uint32_t source, SaHpiSeverityT severity) {
    EventLogEntryRecord entry;
    std::memset(&entry, 0, sizeof entry);
    entry.entry.Event.Source = source;
    entry.entry.Event.EventType = SAHPI_ET_SENSOR;
    entry.entry.Event.Timestamp = time;
    entry.entry.Event.Severity = severity;
    entry.entry.Event.EventDataUnion.SensorEvent.SensorType = SAHPI_FAN;
    entry.entry.Event.EventDataUnion.SensorEvent.SensorNum = source % 2;
    return entry;
}

// What the counts of a log with just these entries are.
LogCounts countsOf(std::vector<EventLogEntryRecord> entries) {
    EventLogInfoRecord info{};
    const auto count = static_cast<std::uint32_t>(entries.size());
    info.sa.Entries = count;
    info.sa.Size = count;
    info.oldest = 1;
    info.newest = count;
    info.freeHead = eventlog::noEntry;
    info.maxUsed = count;
    std::string bytes(static_cast<std::size_t>(eventlog::fileSize(count)), '\0');
    std::memcpy(bytes.data(), &info, sizeof info);
    for (std::uint32_t number = 1; number <= count; ++number) {
        entries[number - 1].entry.EntryId = number;
        std::memcpy(bytes.data() + eventlog::entryOffset(number), &entries[number - 1],
                    sizeof entries[number - 1]);
    }
    const test_support::ScratchFolder folder;
    test_support::writeFile(folder.file("log"), bytes);
    const LogFile file(folder.file("log"));
    const Snapshot snapshot = readLog(file);
    SnapshotReader reader(file, snapshot);
    return countEntries(reader);
}

TEST(StatCounts, GroupsOfEveryKind) {
    const LogCounts counts =
        countsOf({entryOf(begin + 4 * day, 1, SAHPI_MAJOR), entryOf(begin, 3, SAHPI_MAJOR),
                  entryOf(begin + day, 1, SAHPI_CRITICAL)});
    EXPECT_EQ(counts.entries, 3U);
    const auto severities = busiestFirst(counts.severities);
    ASSERT_EQ(severities.size(), 2U);
    EXPECT_EQ(severities[0]->value, static_cast<std::uint32_t>(SAHPI_MAJOR));
    EXPECT_EQ(severities[0]->entries, 2U);
    EXPECT_EQ(severities[0]->times.first, begin);
    EXPECT_EQ(severities[0]->times.last, begin + 4 * day);
    EXPECT_EQ(perDay(severities[0]->times, counts.times), 0.5);
    EXPECT_EQ(severities[1]->value, static_cast<std::uint32_t>(SAHPI_CRITICAL));
    ASSERT_EQ(counts.eventTypes.groups.size(), 1U);
    const auto sources = busiestFirst(counts.sources);
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_EQ(sources[0]->source, "resource 1");
    EXPECT_EQ(sources[1]->source, "resource 3");
    // Both have a "Fan sensor 1": sensors of two sources are two.
    const auto sensors = busiestFirst(counts.sensors);
    ASSERT_EQ(sensors.size(), 2U);
    EXPECT_EQ(sensors[0]->source, "resource 1");
    EXPECT_EQ(sensors[0]->sensor, "Fan sensor 1");
    EXPECT_EQ(sensors[0]->entries, 2U);
}

TEST(StatCounts, GroupsOfOneSizeAreInTheOrderOfTheirNames) {
    const LogCounts counts = countsOf(
        {entryOf(begin, 30, SAHPI_OK), entryOf(begin, 20, SAHPI_OK), entryOf(begin, 10, SAHPI_OK)});
    const auto sources = busiestFirst(counts.sources);
    ASSERT_EQ(sources.size(), 3U);
    EXPECT_EQ(sources[0]->source, "resource 10");
    EXPECT_EQ(sources[2]->source, "resource 30");
}

TEST(StatCounts, TimesThatAreNoTimeOfDay) {
    const LogCounts counts = countsOf({entryOf(SAHPI_TIME_UNSPECIFIED, 1, SAHPI_OK),
                                       entryOf(SAHPI_TIME_MAX_RELATIVE, 1, SAHPI_OK),
                                       entryOf(-5, 1, SAHPI_OK), entryOf(begin, 1, SAHPI_OK)});
    EXPECT_EQ(counts.untimed, 1U);
    EXPECT_EQ(counts.relative, 2U);
    EXPECT_EQ(counts.times.events, 1U);
    EXPECT_EQ(counts.times.first, begin);
    EXPECT_EQ(counts.times.last, begin);
    const CountedGroup &group = *busiestFirst(counts.severities).front();
    EXPECT_EQ(group.entries, 4U);
    EXPECT_EQ(group.times.events, 1U);
    EXPECT_FALSE(perDay(group.times, counts.times).has_value()); // one moment has no length
}

TEST(StatCounts, AsLongAsThereAreTimes) {
    const SaHpiTimeT last = std::numeric_limits<std::int64_t>::max();
    const LogCounts counts =
        countsOf({entryOf(SAHPI_TIME_MAX_RELATIVE + 1, 1, SAHPI_OK), entryOf(last, 1, SAHPI_OK)});
    EXPECT_EQ(counts.times.last, last);
    EXPECT_NEAR(daysOf(counts.times), 96'744.0, 1.0);
}

TEST(StatCounts, NoMoreGroupsThanAreToldApart) {
    std::vector<EventLogEntryRecord> entries;
    for (std::uint32_t number = 0; number < mostGroups + 7; ++number) {
        entries.push_back(entryOf(begin, 1 + number, SAHPI_OK));
    }
    entries.push_back(entryOf(begin, 1, SAHPI_OK)); // one that is known still counts
    const LogCounts counts = countsOf(entries);
    EXPECT_EQ(counts.entries, mostGroups + 8);
    EXPECT_EQ(counts.sources.groups.size(), mostGroups);
    EXPECT_EQ(counts.sources.entriesBeyond, 7U);
    EXPECT_EQ(counts.sensors.groups.size(), mostGroups);
    EXPECT_EQ(counts.sensors.entriesBeyond, 7U);
    EXPECT_EQ(busiestFirst(counts.sources).front()->entries, 2U);
    EXPECT_EQ(counts.severities.groups.size(), 1U);
    EXPECT_EQ(counts.severities.entriesBeyond, 0U);
}

} // namespace
