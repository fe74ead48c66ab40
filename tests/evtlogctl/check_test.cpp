// Goal: evtlogctl check calls every log that the store writes sound, and says of each kind of
// damage by itself, in one whole line, what it is and where. The exit status tells damage from the
// rest.
#include <algorithm>
#include <cstddef>
#include <random>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

namespace {

using namespace zusahpi;
using program::Result;
using sample_logs::bytesOf;
using sample_logs::Kind;
using sample_logs::put;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

constexpr std::uint32_t none = eventlog::noEntry;

constexpr int sound = 0;
constexpr int notices = 1;
constexpr int damaged = 3;

#define IN_SLOT(slot, member)                                                                      \
    (static_cast<std::size_t>(eventlog::slotOffset(slot)) + offsetof(EventLogEntryRecord, member))

class Check : public testing::Test {
  protected:
    void write(const std::string &bytes) {
        writeFile(path, bytes);
        sample_logs::age(path);
    }
    void expect(const std::string &bytes, int status, const std::string &output) {
        write(bytes);
        const Result result = program::run({"check", path});
        EXPECT_EQ(result.exitStatus, status);
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.errors, "");
    }
    // Lines with what they are expected to say, less the count at the end.
    void expectFindings(const std::string &bytes, int status,
                        const std::vector<std::string> &lines) {
        std::string output;
        std::size_t damages = 0;
        for (const std::string &line : lines) {
            output += line + "\n";
            damages += line.find(": damage: ") != std::string::npos ? 1 : 0;
        }
        expect(bytes, status,
               output + fmt::format("{}: {} {}, {} of damage\n", path, lines.size(),
                                    lines.size() == 1 ? "finding" : "findings", damages));
    }
    // A sample log with one field changed.
    template <typename Value>
    void expectDamage(Kind kind, std::size_t offset, Value value, const std::string &line) {
        std::string bytes = bytesOf(kind);
        put(bytes, offset, value);
        expectFindings(bytes, damaged, {line});
    }
    template <typename Value>
    void expectNotice(Kind kind, std::size_t offset, Value value, const std::string &line) {
        std::string bytes = bytesOf(kind);
        put(bytes, offset, value);
        expectFindings(bytes, notices, {line});
    }

    ScratchFolder folder;
    std::string path = folder.file("log");
};

// ---- Sound logs ---------------------------------------------------------------------------------

TEST_F(Check, SoundLogsAreOneLine) {
    expect(bytesOf(Kind::simple), sound,
           path + ": sound: simple log, 3 of 5 entries, 0 free records, 10552 bytes\n");
    expect(bytesOf(Kind::circular), sound,
           path + ": sound: circular log, 3 of 3 entries, 0 free records, 10552 bytes\n");
    expect(bytesOf(Kind::linked), sound,
           path + ": sound: linked log, 3 of 10 entries, 2 free records, 13544 bytes\n");
}

TEST_F(Check, EmptyLogsAreSound) {
    for (const std::uint32_t type : {0U, 1U, 2U}) {
        const std::string empty = folder.file(std::to_string(type));
        test_support::inChild([&] { sample_logs::startStore(empty, type, 3, ZUSAHPI_EL_DROP); });
        EXPECT_EQ(program::run({"check", empty}).exitStatus, sound) << type;
    }
}

// Every state that adding, deleting, clearing and starting leave behind, also files that are longer
// than they need be.
TEST_F(Check, WhatTheStoreLeavesBehindIsSound) {
    for (const std::uint32_t type : {0U, 1U, 2U}) {
        const std::string file = folder.file(std::to_string(type));
        for (std::uint32_t step = 0; step < 24; ++step) {
            test_support::inChild([&] {
                const std::uint32_t action =
                    type == ZUSAHPI_EL_TYPE_SIMPLE ? ZUSAHPI_EL_WRITE_LAST : ZUSAHPI_EL_WRAP;
                sample_logs::startStore(file, type, 4, action);
                for (std::uint32_t i = 0; i <= step % 5; ++i) {
                    sample_logs::add(1 + (step + i) % 6);
                }
                (void)zuSaHpiEventLogEntryDel(
                    step % 3 == 0 ? SAHPI_NEWEST_ENTRY : SAHPI_OLDEST_ENTRY, 0);
                if (step % 2 == 0) {
                    (void)zuSaHpiEventLogEntryDel(SAHPI_NEWEST_ENTRY, 0);
                }
                if (step % 11 == 10) {
                    ASSERT_EQ(zuSaHpiEventLogClear(), SA_OK);
                }
            });
            const Result result = program::run({"check", file});
            EXPECT_EQ(result.exitStatus, sound) << type << " " << step << "\n" << result.output;
        }
    }
}

TEST_F(Check, ImportedLogsAreSound) {
    const std::string root = folder.file("root");
    const std::string file = sel_samples::exampleFile("server.sel");
    ASSERT_EQ(program::run({"--root", root, "import", file}).exitStatus, 0);
    const Result result = program::run({"--root", root, "check"}); // a watchdog of action 9 in it
    EXPECT_EQ(result.exitStatus, sound) << result.output;
    EXPECT_EQ(result.output, root +
                                 "/evtlog/evtlog.dat: sound: linked log, 234 of 10000 entries, 0 "
                                 "free records, 356128 bytes\n");
}

TEST_F(Check, NeitherLockNorWriting) {
    write(bytesOf(Kind::linked));
    ASSERT_EQ(chmod(path.c_str(), 0400), 0);
    writeFile(path + ".lck", "");
    EXPECT_EQ(program::run({"check", path}).exitStatus, sound);
    EXPECT_EQ(readFile(path), bytesOf(Kind::linked));
}

// ---- The length of the file ---------------------------------------------------------------------

TEST_F(Check, FilesThatAreTooShort) {
    const std::string cutWhileMade =
        "offset 0: notice: a crash while the log was made leaves such a file; every start stops at "
        "it, until \"rm " +
        path + "\" lets the next one make the log anew";
    expectFindings("", damaged,
                   {"offset 0: damage: the file ends here, 6064 bytes before the end of an empty "
                    "log",
                    cutWhileMade});
    expectFindings(bytesOf(Kind::linked).substr(0, 79), damaged,
                   {"offset 79: damage: the file ends here, 5985 bytes before the end of an empty "
                    "log",
                    cutWhileMade});
    expectFindings(bytesOf(Kind::linked).substr(0, 80), damaged,
                   {"offset 80: damage: the file ends here, 5984 bytes before the end of an empty "
                    "log"});
    expectFindings(bytesOf(Kind::linked).substr(0, 6063), damaged,
                   {"offset 6063: damage: the file ends here, 1 bytes before the end of an empty "
                    "log"});
    // Of the records that are left the links still lead to the one that is not.
    expectFindings(bytesOf(Kind::simple).substr(0, 6064 + 2 * 1496 + 5), damaged,
                   {"offset 9061: damage: the file ends here, 1491 bytes before the end of entry "
                    "3"});
}

TEST_F(Check, RecordsBehindTheLastAreDead) {
    expect(bytesOf(Kind::simple) + std::string(2 * 1496, 'x'), sound,
           path + ": sound: simple log, 3 of 5 entries, 0 free records, 13544 bytes\n");
    expectFindings(bytesOf(Kind::simple) + std::string(1496 + 100, 'x'), notices,
                   {"offset 12048: notice: 100 bytes of an unfinished record end the file; the "
                    "next start cuts them off"});
}

// ---- The info record ----------------------------------------------------------------------------

TEST_F(Check, ValuesOfTheInfoRecord) {
    const Kind log = Kind::linked;
    expectNotice(log, INFO(sa.Enabled), std::uint8_t{2},
                 "offset 32: notice: Enabled is 2 instead of 0 or 1");
    expectNotice(log, INFO(sa.OverflowFlag), std::uint8_t{255},
                 "offset 33: notice: OverflowFlag is 255 instead of 0 or 1");
    expectNotice(log, INFO(sa.OverflowResetable), std::uint8_t{4},
                 "offset 34: notice: OverflowResetable is 4 instead of 0 or 1");
    expectNotice(log, INFO(sa.OverflowAction), 2U,
                 "offset 36: notice: OverflowAction is 2, which stands for nothing");
    expectNotice(log, INFO(overflowAction), 3U,
                 "offset 44: notice: overflowAction is 3, which stands for nothing");
    expectNotice(log, 12, 1U, "offset 12: notice: 4 reserved bytes are not zero");
    expectNotice(log, 35, std::uint8_t{1}, "offset 35: notice: 1 reserved bytes are not zero");
    expectNotice(log, INFO(reserved), 0x80000000U,
                 "offset 76: notice: 4 reserved bytes are not zero");
    expectDamage(log, INFO(type), 3U,
                 "offset 40: damage: the log's type is 3, which stands for nothing");
}

TEST_F(Check, CountsAndSizes) {
    expectDamage(Kind::simple, INFO(sa.Entries), 4U,
                 "offset 0: damage: the log counts 4 entries, but 3 were found");
    expectDamage(Kind::circular, INFO(sa.Entries), 0U,
                 "offset 0: damage: the log counts 0 entries, but 3 were found");
    expectDamage(Kind::linked, INFO(sa.Entries), 5U,
                 "offset 0: damage: the log counts 5 entries, but 3 were found");
    expectDamage(Kind::linked, INFO(sa.Size), 4U,
                 "offset 60: damage: the highest number used is 5, but the log's Size is 4");
    expectDamage(Kind::simple, INFO(maxUsed), 2U,
                 "offset 60: damage: the highest number used is said to be 2, but by the ends of "
                 "the log it is 3");
    expectDamage(Kind::circular, INFO(maxUsed), 2U,
                 "offset 60: damage: the highest number used is said to be 2, but by the ends of "
                 "the log it is 3");
}

TEST_F(Check, EndsOfSimpleAndCircularLogs) {
    expectDamage(
        Kind::simple, INFO(newest), 9U,
        "offset 52: damage: the newest entry is said to be 9, which the log does not have");
    expectDamage(
        Kind::simple, INFO(oldest), 2U,
        "offset 48: damage: the oldest entry is said to be 2, which the log does not have");
    expectDamage(Kind::circular, INFO(newest), none,
                 "offset 52: damage: the newest entry is said to be none, which the log does not "
                 "have");
    expectDamage(
        Kind::circular, INFO(oldest), 0U,
        "offset 48: damage: the oldest entry is said to be 0, which the log does not have");
    expectNotice(
        Kind::circular, INFO(freeHead), 2U,
        "offset 56: notice: the log has a free list (2), which is so in Linked logs alone");
}

TEST_F(Check, AnEmptyLogThatUsesNumbers) {
    std::string bytes = bytesOf(Kind::simple);
    put(bytes, INFO(oldest), none);
    put(bytes, INFO(newest), none);
    put(bytes, INFO(sa.Entries), 0U);
    expectFindings(bytes, damaged,
                   {"offset 60: damage: the highest number used is 3, but the log has no oldest "
                    "entry"});
}

// ---- The chain of a Linked log ------------------------------------------------------------------

TEST_F(Check, EndsOfTheChain) {
    expectDamage(Kind::linked, INFO(oldest), 77U,
                 "offset 48: damage: the oldest entry is said to be 77, which the log does not "
                 "have");
    expectDamage(Kind::linked, INFO(oldest), none,
                 "offset 48: damage: the oldest entry is said to be none, which the log does not "
                 "have");
    expectDamage(Kind::linked, INFO(newest), 3U,
                 "offset 52: damage: the newest entry is said to be 3, but the chain ends at 5");
    expectDamage(Kind::linked, INFO(newest), none,
                 "offset 52: damage: the newest entry is said to be none, but the chain ends at 5");
}

TEST_F(Check, LinksOfTheChain) {
    expectDamage(Kind::linked, IN_ENTRY(3, next), 99U,
                 "offset 9064, entry 3: damage: the entry after it is said to be 99, which the log "
                 "does not have");
    expectDamage(Kind::linked, IN_ENTRY(3, prev), 0U,
                 "offset 9060, entry 3: damage: the entry before it is said to be 0, but the chain "
                 "comes from 1");
    expectDamage(
        Kind::linked, IN_ENTRY(1, next), 2U,
        "offset 6072, entry 1: damage: the entry after it is said to be 2, which is on the "
        "free list");
    expectDamage(Kind::linked, IN_ENTRY(1, prev), 5U,
                 "offset 6068, entry 1: damage: the entry before it is said to be 5, but the chain "
                 "comes from none");
}

TEST_F(Check, AChainThatRunsInACircle) {
    expectDamage(Kind::linked, IN_ENTRY(5, next), 3U,
                 "offset 12056, entry 5: damage: the entry after it is said to be 3, so that the "
                 "chain runs in a circle");
}

TEST_F(Check, AChainThatEndsTooSoon) {
    std::string bytes = bytesOf(Kind::linked);
    put(bytes, IN_ENTRY(3, next), none);
    put(bytes, INFO(newest), 3U);
    expectFindings(bytes, damaged,
                   {"offset 12048, entry 5: damage: the entry is in no chain",
                    "offset 0: damage: the log counts 3 entries, but 2 were found"});
}

TEST_F(Check, MarksThatContradictTheLists) {
    expectDamage(Kind::linked, IN_ENTRY(3, deleted), 1U,
                 "offset 9056, entry 3: damage: the entry is in the chain, but marked deleted");
    expectDamage(Kind::linked, IN_ENTRY(2, deleted), 0U,
                 "offset 7560, entry 2: damage: the record is on the free list, but not marked "
                 "deleted");
    expectNotice(Kind::linked, IN_ENTRY(2, deleted), 2U,
                 "offset 7560, entry 2: notice: deleted is 2 instead of 0 or 1");
    expectDamage(Kind::simple, IN_ENTRY(2, deleted), 1U,
                 "offset 7560, entry 2: damage: the entry is marked deleted");
}

TEST_F(Check, TheFreeList) {
    expectDamage(Kind::linked, INFO(freeHead), 2U,
                 "offset 10552, entry 4: damage: the record is marked deleted, but not on the free "
                 "list");
    expectDamage(Kind::linked, INFO(freeHead), 6U,
                 "offset 56: damage: the next free record is said to be 6, which the log does not "
                 "have");
    expectDamage(Kind::linked, INFO(freeHead), 3U,
                 "offset 56: damage: the next free record is said to be 3, which is an entry");
    expectDamage(Kind::linked, IN_ENTRY(2, next), 4U,
                 "offset 7568, entry 2: damage: the next free record is said to be 4, so that the "
                 "free list runs in a circle");
}

// ---- Records ------------------------------------------------------------------------------------

TEST_F(Check, IdsThatDoNotMatch) {
    for (const Kind kind : {Kind::simple, Kind::circular, Kind::linked}) {
        expectDamage(kind, IN_ENTRY(3, entry.EntryId), 99U,
                     "offset 9072, entry 3: damage: the entry calls itself 99");
    }
    expectDamage(Kind::linked, IN_ENTRY(2, entry.EntryId), 0U, // a deleted one
                 "offset 7576, entry 2: damage: the entry calls itself 0");
}

TEST_F(Check, TimesThatRunBackwards) {
    expectNotice(Kind::linked, IN_ENTRY(3, entry.Timestamp), std::int64_t{5},
                 "offset 9080, entry 3: notice: it was logged before entry 1, which precedes it");
    expectNotice(Kind::simple, IN_ENTRY(2, entry.Timestamp), std::int64_t{5},
                 "offset 7584, entry 2: notice: it was logged before entry 1, which precedes it");
    // Around the end of the ring: entries 2, 3, 1.
    expectNotice(Kind::circular, IN_ENTRY(1, entry.Timestamp), std::int64_t{5},
                 "offset 6088, entry 1: notice: it was logged before entry 3, which precedes it");
}

TEST_F(Check, LinksAndReservedBytes) {
    expectNotice(Kind::simple, IN_ENTRY(2, next), 3U,
                 "offset 7564, entry 2: notice: the entry has links (none and 3), which is so in "
                 "Linked logs alone");
    expectNotice(Kind::linked, IN_ENTRY(1, reserved), 1U,
                 "offset 6076, entry 1: notice: 4 reserved bytes of the entry are not zero");
    expectNotice(Kind::linked, IN_ENTRY(1, entry.EntryId) + 4, 1U,
                 "offset 6084, entry 1: notice: 4 reserved bytes of the entry are not zero");
}

TEST_F(Check, ValuesOfTheEvent) {
    const Kind log = Kind::linked;
    expectNotice(log, IN_ENTRY(3, entry.Event.EventType), 9U,
                 "offset 9092, entry 3: notice: event type is 9, which stands for nothing");
    expectNotice(log, IN_ENTRY(3, entry.Event.Severity), 5U,
                 "offset 9104, entry 3: notice: severity is 5, which stands for nothing");
    expectNotice(log, IN_ENTRY(1, entry.Event.EventDataUnion.UserEvent.UserEventData.DataType), 7U,
                 "offset 6120, entry 1: notice: user event: text type is 7, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(1, entry.Event.EventDataUnion.UserEvent.UserEventData.Language),
                 300U,
                 "offset 6124, entry 1: notice: user event: language is 300, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(3, entry.Event.EventDataUnion.SensorEvent.SensorType), 0U,
                 "offset 9116, entry 3: notice: sensor event: sensor type is 0, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(3, entry.Event.EventDataUnion.SensorEvent.Assertion),
                 std::uint8_t{3},
                 "offset 9121, entry 3: notice: sensor event: assertion is 3 instead of 0 or 1");
    expectNotice(log, IN_ENTRY(3, entry.Event.EventDataUnion.SensorEvent.OptionalDataPresent),
                 std::uint8_t{0xC3},
                 "offset 9124, entry 3: notice: sensor event: optional data has bits 0xC0, which "
                 "stand for nothing");
    expectNotice(log, IN_ENTRY(3, entry.Event.EventDataUnion.SensorEvent.TriggerReading.Type), 4U,
                 "offset 9132, entry 3: notice: sensor event: trigger reading: reading type is 4, "
                 "which stands for nothing");
    expectNotice(log, IN_ENTRY(5, entry.Event.EventDataUnion.WatchdogEvent.WatchdogUse), 6U,
                 "offset 12116, entry 5: notice: watchdog: use is 6, which stands for nothing");
}

TEST_F(Check, UnicodeOfAnOddLength) {
    // Entry 2 of the Simple log.
    expectNotice(Kind::simple,
                 IN_ENTRY(2, entry.Event.EventDataUnion.HpiSwEvent.EventData.DataLength),
                 std::uint8_t{3},
                 "offset 7632, entry 2: notice: software event: length is 3, but Unicode text has "
                 "two bytes a character");
}

TEST_F(Check, ValuesOfTheRptEntry) {
    const Kind log = Kind::linked;
    expectNotice(log, IN_ENTRY(3, rpt.ResourceCapabilities), 0x80000001U,
                 "offset 9552, entry 3: notice: RPT entry: capabilities has bits 0x80000000, which "
                 "stand for nothing");
    expectNotice(log, IN_ENTRY(3, rpt.ResourceSeverity), 0xF1U,
                 "offset 9560, entry 3: notice: RPT entry: severity is 241, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(3, rpt.ResourceFailed), std::uint8_t{9},
                 "offset 9564, entry 3: notice: RPT entry: failed is 9 instead of 0 or 1");
    expectNotice(log, IN_ENTRY(3, rpt.ResourceEntity), 0x29U,
                 "offset 9424, entry 3: notice: RPT entry: entity type is 41, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(3, rpt.ResourceTag.DataType), 5U,
                 "offset 9568, entry 3: notice: RPT entry: tag: text type is 5, which stands for "
                 "nothing");
}

TEST_F(Check, ValuesOfTheRdr) {
    const Kind log = Kind::linked;
    expectNotice(log, IN_ENTRY(3, rdr.RdrType), 6U,
                 "offset 9836, entry 3: notice: RDR: type is 6, which stands for nothing");
    expectNotice(log, IN_ENTRY(3, rdr.RdrTypeUnion.SensorRec.DataFormat.BaseUnits), 0x5BU,
                 "offset 10008, entry 3: notice: sensor RDR: base units is 91, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(3, rdr.RdrTypeUnion.SensorRec.DataFormat.Range.Flags),
                 std::uint8_t{0x28},
                 "offset 10024, entry 3: notice: sensor RDR: range flags has bits 0x20, which "
                 "stand for nothing");
    expectNotice(log, IN_ENTRY(5, rdr.RdrTypeUnion.CtrlRec.OutputType), 11U,
                 "offset 12972, entry 5: notice: control RDR: output type is 11, which stands for "
                 "nothing");
    expectNotice(log, IN_ENTRY(5, rdr.RdrTypeUnion.CtrlRec.TypeUnion.Text.Default.Text.DataType),
                 5U,
                 "offset 12996, entry 5: notice: control RDR: default text: text type is 5, which "
                 "stands for nothing");
    std::string stream = bytesOf(log);
    put(stream, IN_ENTRY(5, rdr.RdrTypeUnion.CtrlRec.Type), SAHPI_CTRL_TYPE_STREAM);
    put(stream, IN_ENTRY(5, rdr.RdrTypeUnion.CtrlRec.TypeUnion.Stream.Default.Repeat),
        std::uint8_t{1});
    put(stream, IN_ENTRY(5, rdr.RdrTypeUnion.CtrlRec.TypeUnion.Stream.Default.StreamLength), 5U);
    expectFindings(stream, notices,
                   {"offset 12984, entry 5: notice: control RDR: stream length is 5 instead of 4 "
                    "at most"});
}

// What is absent, unused or dead says nothing.
TEST_F(Check, ValuesThatDoNotCount) {
    std::string bytes = bytesOf(Kind::linked);
    put(bytes, IN_ENTRY(1, rpt.ResourceSeverity), 99U); // no capabilities: no RPT entry
    put(bytes, IN_ENTRY(1, rdr.Entity), 99U);           // no RDR
    put(bytes, IN_ENTRY(2, entry.Event.Severity), 99U); // deleted
    put(bytes, IN_ENTRY(3, entry.Event.EventDataUnion.SensorEvent.PreviousState), 0xFFFFU);
    put(bytes, IN_ENTRY(3, rpt.ResourceEntity.Entry[2]), 99U); // behind the root
    put(bytes, IN_SLOT(0, prev), 99U);                         // no update waits
    expect(bytes, sound,
           path + ": sound: linked log, 3 of 10 entries, 2 free records, 13544 bytes\n");
}

// ---- An interrupted update ----------------------------------------------------------------------

TEST_F(Check, AnInterruptedUpdateIsNoDamage) {
    expectFindings(bytesOf(Kind::interrupted), notices,
                   {"offset 72: notice: an interrupted update of 2 records waits; the next start "
                    "completes it"});
}

TEST_F(Check, AnInterruptedUpdateIsCheckedAsItWillBe) {
    std::string bytes = bytesOf(Kind::interrupted);
    put(bytes, IN_SLOT(1, prev), 4U); // of entry 5
    expectFindings(bytes, damaged,
                   {"offset 72: notice: an interrupted update of 2 records waits; the next start "
                    "completes it",
                    "offset 1580, entry 5 in transaction slot 1: damage: the entry before it is "
                    "said to be 4, but the chain comes from 3"});
}

TEST_F(Check, SlotsThatNoStartCanApply) {
    std::string bytes = bytesOf(Kind::linked); // what the slots hold is an update of long ago
    put(bytes, INFO(updating), 1U);
    for (const std::uint32_t number : {0U, 6U}) {
        put(bytes, IN_SLOT(0, entry.EntryId), number);
        expectFindings(bytes, damaged,
                       {fmt::format("offset 80, transaction slot 0: damage: it holds entry {}, "
                                    "which the log does not have, so no start can apply the "
                                    "update",
                                    number)});
    }
}

TEST_F(Check, AnUpdateInALogThatHasNone) {
    expectDamage(Kind::simple, INFO(updating), 1U,
                 "offset 72: damage: an update waits, which is so in Linked logs alone");
    expectFindings(
        [] {
            std::string bytes = bytesOf(Kind::interrupted);
            put(bytes, INFO(updating), 2U);
            return bytes;
        }(),
        notices,
        {"offset 72: notice: updating is 2 instead of 0 or 1",
         "offset 72: notice: an interrupted update of 2 records waits; the next start completes "
         "it"});
}

// ---- Many findings, big files, other files ------------------------------------------------------

// A Simple log of `count` entries that is made here: the store would take a while.
std::string simpleLog(std::uint32_t count) {
    std::string bytes = bytesOf(Kind::simple);
    const std::string record = bytes.substr(eventlog::entriesOffset, eventlog::entrySize);
    bytes.resize(eventlog::entriesOffset);
    for (std::uint32_t number = 1; number <= count; ++number) {
        bytes += record;
        put(bytes, IN_ENTRY(number, entry.EntryId), number);
    }
    for (const std::size_t field : {INFO(sa.Entries), INFO(sa.Size), INFO(newest), INFO(maxUsed)}) {
        put(bytes, field, count);
    }
    return bytes;
}

TEST_F(Check, FindingsAlikeAreCutShort) {
    std::string bytes = simpleLog(30);
    for (std::uint32_t number = 1; number <= 30; ++number) {
        put(bytes, IN_ENTRY(number, entry.Event.Severity), 7U);
    }
    write(bytes);
    const Result few = program::run({"check", path});
    EXPECT_EQ(std::count(few.output.begin(), few.output.end(), '\n'), 12);
    EXPECT_NE(few.output.find("\nand 20 more like it; --all prints every one\n"),
              std::string::npos);
    EXPECT_NE(few.output.find(": 30 findings, 0 of damage\n"), std::string::npos);
    const Result all = program::run({"check", "--all", path});
    EXPECT_EQ(std::count(all.output.begin(), all.output.end(), '\n'), 31);
    EXPECT_EQ(all.exitStatus, notices);
}

TEST_F(Check, LongLogsGetAProgressBarOnATerminal) {
    write(simpleLog(500));
    const Result shown = program::runOnTerminal({"check", path});
    EXPECT_EQ(shown.exitStatus, sound);
    EXPECT_TRUE(shown.errors.starts_with("\r[")) << shown.errors;
    EXPECT_EQ(shown.errors.substr(shown.errors.size() - 4), "\r\x1B[K");
    EXPECT_EQ(program::run({"check", path}).errors, "");
}

// Numbers from the file are no measure for memory: the records that it holds are.
TEST_F(Check, HugeNumbersCostNoMemory) {
    std::string bytes = bytesOf(Kind::interrupted);
    put(bytes, INFO(maxUsed), 0xFFFFFFF0U);
    put(bytes, INFO(sa.Size), 0xFFFFFFF0U);
    put(bytes, IN_SLOT(0, entry.EntryId), 0xFFFFFFE0U);
    write(bytes);
    const Result result = program::run({"check", path});
    EXPECT_EQ(result.exitStatus, damaged);
    EXPECT_NE(result.output.find("the file ends here, 6425271043400 bytes before the end of entry "
                                 "4294967280\n"),
              std::string::npos)
        << result.output;
}

// What stands in the file between two writes of another process is no finding.
TEST_F(Check, WhileAnotherProcessWrites) {
    std::mt19937_64 random(0xC4EC);
    std::vector<sel_samples::Record> records(3000);
    std::generate(records.begin(), records.end(),
                  [&] { return sel_samples::randomRecord(random); });
    const std::string input = folder.file("records");
    writeFile(input, sel_samples::bytesOf(records));
    for (const char *const type : {"circular", "linked"}) {
        const std::string config = folder.file(type);
        writeFile(config, fmt::format("EventLog={} {{ Filename={} Size=100 Overflow=wrap }}\n",
                                      type, folder.file(std::string(type) + ".log")));
        const std::string log = folder.file(std::string(type) + ".log");
        const pid_t importer =
            program::start({"--config", config, "import", "--format=raw", input});
        int status = 0;
        while (waitpid(importer, &status, WNOHANG) == 0) {
            const Result result = program::run({"check", log});
            if (result.exitStatus != sound) { // not there yet, or never at rest
                EXPECT_EQ(result.exitStatus, 4) << result.output;
                EXPECT_EQ(result.output, "");
            }
        }
        EXPECT_EQ(WEXITSTATUS(status), 0);
        EXPECT_EQ(program::run({"check", log}).exitStatus, sound);
    }
}

// Nobody is writing, so after a while what was found counts.
TEST_F(Check, FindingsInAFileThatWasJustChanged) {
    writeFile(path, bytesOf(Kind::linked).substr(0, 6064));
    const Result result = program::run({"check", path});
    EXPECT_EQ(result.exitStatus, damaged);
    EXPECT_NE(result.output.find("offset 6064: damage: the file ends here, 7480 bytes before the "
                                 "end of entry 5\n"),
              std::string::npos)
        << result.output;
}

TEST_F(Check, WhatIsNoFile) {
    const Result folderResult = program::run({"check", folder.path()});
    EXPECT_EQ(folderResult.exitStatus, damaged);
    EXPECT_EQ(folderResult.errors, "evtlogctl: " + folder.path() +
                                       " is no log: it is not a regular file; name an event log "
                                       "file\n");
    const Result missing = program::run({"check", folder.file("missing")});
    EXPECT_EQ(missing.exitStatus, 4);
    EXPECT_EQ(missing.errors,
              "evtlogctl: " + folder.file("missing") + " does not exist; name an event log file\n");
}

} // namespace
