// What a crash costs a Simple or Circular log. They have no transaction log: an operation writes
// at most one entry record and then the info record.
//
// Promised, and tested here for writes that reach the disk in the order they were made:
//   - the store starts, and the log is structurally sound;
//   - info record and number of entries are those before or after the operation, exactly;
//   - every entry that the operation does not overwrite is there, byte for byte;
//   - the entry that an add to a full log overwrites (the oldest when it wraps, the newest when it
//     writes last) may be old, new, or sectors of both, under its own number.
//
// Not promised: the order itself, for these files are not written synchronously. When the info
// record arrives without the entry record, the log starts, and every entry that the operation does
// not write is still there; the written one may be zeros. When a clear's truncation arrives without
// its info record, the log starts; the entries that were to be cleared are zeros.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/crash/judgement.h"
#include "tests/support/files.h"
#include "tests/support/log_soundness.h"

using namespace crash_test;
using test_support::FileEvent;

namespace {

std::vector<Scenario> scenarios() {
    std::vector<Scenario> all = simpleScenarios();
    const std::vector<Scenario> circular = circularScenarios();
    all.insert(all.end(), circular.begin(), circular.end());
    return all;
}

// The number of the entry whose record the operation writes; 0 when it writes none.
std::uint32_t writtenEntry(const Recording &recording) {
    std::uint32_t number = 0;
    for (const FileEvent &event : recording.events) {
        if (event.kind == FileEvent::Kind::write && event.offset >= entriesStart) {
            EXPECT_EQ(number, 0U) << "more than one record written";
            EXPECT_EQ(event.bytes.size(), recordLength);
            number = static_cast<std::uint32_t>((event.offset - entriesStart) / recordLength) + 1;
        }
    }
    return number;
}

bool sameRecord(const EventLogEntryRecord &a, const EventLogEntryRecord &b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Each sector of the file in which the record lies is that of one or the other.
bool isTornBetween(const std::string &found, const std::string &a, const std::string &b,
                   std::uint32_t number) {
    const std::size_t start = entriesStart + (std::size_t{number} - 1) * recordLength;
    const std::size_t end = start + recordLength;
    for (std::size_t at = start; at < end;) {
        const std::size_t next = std::min((at / sectorSize + 1) * sectorSize, end);
        const std::string sector = found.substr(at, next - at);
        if (sector != a.substr(at, next - at) && sector != b.substr(at, next - at)) {
            return false;
        }
        at = next;
    }
    return true;
}

// Empty when `found` has the entries of `expected`, each intact but perhaps the one that was
// written.
std::string unlikeEntries(const LogState &found, const LogState &expected, std::uint32_t written) {
    if (found.entries.size() != expected.entries.size()) {
        return std::to_string(found.entries.size()) + " entries instead of " +
               std::to_string(expected.entries.size());
    }
    for (std::size_t i = 0; i < found.entries.size(); ++i) {
        const EventLogEntryRecord &entry = expected.entries[i];
        if (entry.entry.EntryId != written && !sameRecord(found.entries[i], entry)) {
            return "entry " + std::to_string(entry.entry.EntryId) + " is damaged";
        }
    }
    return "";
}

std::string judgeUnprotected(const Expectation &expectation, const Recording &recording,
                             const CrashImage &image) {
    test_mainlib::state().timeOfDay = timeOfRestart;
    const LogState state = stateAfterStart(expectation.block, image.bytes);
    const std::string &once = state.file;
    if (stateAfterStart(expectation.block, once).file != once) {
        return "a second start changes the file";
    }
    const std::vector<std::string> findings = test_support::unsoundness(once);
    if (!findings.empty()) {
        return findings[0];
    }
    if (state == expectation.after) {
        return "";
    }
    if (image.whole == recording.events.size()) {
        return "complete, but not as after: " + difference(state, expectation.after);
    }
    if (infoOf(state) != infoOf(expectation.before)) {
        return "the info record is neither that before nor that after";
    }
    const std::uint32_t written = writtenEntry(recording);
    const bool inUse = written != 0 && once.size() >= entriesStart + written * recordLength;
    if (inUse && !isTornBetween(once, recording.before, recording.after, written)) {
        return "entry " + std::to_string(written) + " is neither old nor new nor part of both";
    }
    return unlikeEntries(state, expectation.before, inUse ? written : 0);
}

TEST(UnprotectedCrash, OnlyTheOverwrittenEntryIsEverLost) {
    Tally tally;
    for (const Scenario &scenario : scenarios()) {
        const Recording recording = record(scenario);
        for (const Expectation &expectation : expectationsOf(scenario, recording)) {
            forEachCrashImage(recording.before, recording.events, [&](const CrashImage &image) {
                tally.distinct.insert(std::hash<std::string>()(image.bytes));
                sessionName = scenario.name + ", " + nameOf(image);
                const std::string wrong = judgeUnprotected(expectation, recording, image);
                if (!wrong.empty()) {
                    tally.complain(scenario.name, image, wrong);
                }
            });
        }
    }
    report(tally);
    EXPECT_GE(tally.distinct.size(), 200U);
    std::printf("figure: crash images of Simple and Circular logs, distinct: %zu\n",
                tally.distinct.size());
}

// That the overwritten entry can be lost is no mistake of the test: it happens.
TEST(UnprotectedCrash, AnOverwrittenEntryCanBeLost) {
    std::size_t lost = 0;
    for (const Scenario &scenario : scenarios()) {
        const Recording recording = record(scenario);
        const Expectation expectation = expectationsOf(scenario, recording).front();
        forEachCrashImage(recording.before, recording.events, [&](const CrashImage &image) {
            const LogState state = stateAfterStart(expectation.block, image.bytes);
            lost += !(state == expectation.before) && !(state == expectation.after) ? 1 : 0;
        });
    }
    EXPECT_GT(lost, 0U);
}

// Each event by itself, without those before it: what a disk may do that takes them in any order.
TEST(UnprotectedCrash, OutOfOrderTheStoreStartsAndKeepsWhatWasNotWritten) {
    Tally tally;
    for (const Scenario &scenario : scenarios()) {
        const Recording recording = record(scenario);
        if (!scenario.operation) {
            continue; // a start writes its info record alone
        }
        const Expectation expectation = expectationsOf(scenario, recording).front();
        const std::uint32_t written = writtenEntry(recording);
        for (const FileEvent &event : recording.events) {
            forEachCrashImage(recording.before, {event}, [&](const CrashImage &image) {
                sessionName = scenario.name + ", out of order, " + nameOf(image);
                tally.distinct.insert(std::hash<std::string>()(image.bytes));
                const LogState state = stateAfterStart(expectation.block, image.bytes);
                const bool after = infoOf(state) == infoOf(expectation.after);
                const std::string wrong =
                    unlikeEntries(state, after ? expectation.after : expectation.before, written);
                if (!wrong.empty() && event.kind != FileEvent::Kind::truncate) {
                    tally.complain(scenario.name, image, wrong);
                }
            });
        }
    }
    report(tally);
    std::printf("figure: crash images of Simple and Circular logs, out of order: %zu\n",
                tally.distinct.size());
}

} // namespace
