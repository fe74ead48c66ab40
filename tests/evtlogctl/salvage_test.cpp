// Goal: whatever single thing is wrong with a log, check --salvage writes a sound log of all
// entries that can be read, in order, each with its RPT entry, RDR, event and time byte for byte;
// or, when it cannot, it leaves nothing behind.
#include <cstddef>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "tests/evtlogctl/listed_log.h"
#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

namespace {

using namespace zusahpi;
using program::Result;
using sample_logs::bytesOf;
using sample_logs::get;
using sample_logs::Kind;
using sample_logs::put;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

constexpr std::uint32_t none = eventlog::noEntry;

using Numbers = std::vector<std::uint32_t>;

class Salvage : public testing::Test {
  protected:
    Result salvage(const std::string &bytes) {
        std::filesystem::remove(saved);
        writeFile(path, bytes);
        sample_logs::age(path);
        return program::run({"check", "--salvage", saved, path});
    }
    // The payload of entry `number` of `bytes`: time of logging, event, RPT entry and RDR.
    static std::string payload(const std::string &bytes, std::uint32_t number) {
        constexpr std::size_t begin = offsetof(EventLogEntryRecord, entry.Timestamp);
        return bytes.substr(static_cast<std::size_t>(eventlog::entryOffset(number)) + begin,
                            sizeof(EventLogEntryRecord) - begin);
    }
    // What is saved of `bytes` are the entries `numbers` of it, renumbered, in a log without
    // damage.
    void expectSaved(const std::string &bytes, const Numbers &numbers) {
        const Result result = salvage(bytes);
        const std::string counted = std::to_string(get<std::uint32_t>(bytes, INFO(sa.Entries)));
        EXPECT_TRUE(result.output.ends_with("\n" + saved + ": " + std::to_string(numbers.size()) +
                                            " entries saved; the log counts " + counted + "\n"))
            << result.output << result.errors;
        ASSERT_TRUE(exists(saved));
        const std::string after = readFile(saved);
        EXPECT_EQ(after.size(), 6064 + numbers.size() * 1496);
        for (std::uint32_t i = 0; i < numbers.size(); ++i) {
            EXPECT_TRUE(payload(after, i + 1) == payload(bytes, numbers[i])) << numbers[i];
        }
        sample_logs::age(saved);
        const Result check = program::run({"check", saved});
        EXPECT_NE(check.exitStatus, 3) << check.output;
        EXPECT_EQ(program::run({"list", saved}).exitStatus, 0);
        const listed_log::Listed log = listed_log::list(saved);
        EXPECT_EQ(log.damage, "");
        EXPECT_EQ(log.entries.size(), numbers.size());
        EXPECT_EQ(filesInFolder(), 2); // no temporary one is left
    }
    std::ptrdiff_t filesInFolder() {
        return std::distance(std::filesystem::directory_iterator(folder.path()),
                             std::filesystem::directory_iterator());
    }

    ScratchFolder folder;
    std::string path = folder.file("log");
    std::string saved = folder.file("new");
};

template <typename Value>
std::string changed(Kind kind, std::size_t offset, Value value) {
    std::string bytes = bytesOf(kind);
    put(bytes, offset, value);
    return bytes;
}

TEST_F(Salvage, SoundLogsAreCopiedInTheirOrder) {
    expectSaved(bytesOf(Kind::simple), {1, 2, 3});
    expectSaved(bytesOf(Kind::circular), {2, 3, 1});
    expectSaved(bytesOf(Kind::linked), {1, 3, 5});
}

TEST_F(Salvage, TypeAndSettingsStay) {
    for (const Kind kind : {Kind::simple, Kind::circular, Kind::linked}) {
        const std::string bytes = bytesOf(kind);
        (void)salvage(bytes);
        const auto before = get<EventLogInfoRecord>(bytes, 0);
        const auto after = get<EventLogInfoRecord>(readFile(saved), 0);
        EXPECT_EQ(after.type, before.type);
        EXPECT_EQ(after.sa.Size, before.sa.Size);
        EXPECT_EQ(after.overflowAction, before.overflowAction);
        EXPECT_EQ(after.sa.OverflowAction, before.sa.OverflowAction);
        EXPECT_EQ(after.sa.UserEventMaxSize, before.sa.UserEventMaxSize);
        EXPECT_EQ(after.sa.UpdateTimestamp, before.sa.UpdateTimestamp);
        EXPECT_EQ(after.timeOffset, before.timeOffset);
        EXPECT_EQ(after.sa.Enabled, before.sa.Enabled);
        EXPECT_EQ(after.sa.OverflowFlag, before.sa.OverflowFlag);
        EXPECT_EQ(after.updating, 0U);
    }
}

// The log that was saved goes on working.
TEST_F(Salvage, TheNewLogTakesEntries) {
    (void)salvage(changed(Kind::linked, IN_ENTRY(3, next), 99U));
    test_support::inChild([&] {
        sample_logs::startStore(saved, ZUSAHPI_EL_TYPE_LINKED, 10, ZUSAHPI_EL_WRAP);
        sample_logs::add(6);
        ASSERT_EQ(zuSaHpiEventLogEntryDel(2, 0), SA_OK);
        sample_logs::add(6);
    });
    EXPECT_EQ(program::run({"check", saved}).exitStatus, 0);
}

TEST_F(Salvage, AnyOneFieldOfTheInfoRecord) {
    for (const std::size_t field : {INFO(oldest), INFO(newest), INFO(maxUsed), INFO(sa.Entries)}) {
        for (const std::uint32_t value : {0U, 2U, 77U, none}) {
            SCOPED_TRACE(std::to_string(field) + " " + std::to_string(value));
            expectSaved(changed(Kind::linked, field, value), {1, 3, 5});
        }
    }
    for (const std::size_t field : {INFO(oldest), INFO(newest), INFO(maxUsed), INFO(sa.Entries)}) {
        for (const std::uint32_t value : {0U, 2U, 77U, none}) {
            SCOPED_TRACE(std::to_string(field) + " " + std::to_string(value));
            expectSaved(changed(Kind::simple, field, value), {1, 2, 3});
            expectSaved(changed(Kind::circular, field, value), {2, 3, 1});
        }
    }
    expectSaved(changed(Kind::linked, INFO(freeHead), 5U), {1, 3, 5});
    expectSaved(changed(Kind::linked, INFO(sa.Size), 0U), {1, 3, 5});
    expectSaved(changed(Kind::linked, INFO(type), 9U), {1, 3, 5});
    expectSaved(changed(Kind::linked, INFO(overflowAction), 9U), {1, 3, 5});
}

TEST_F(Salvage, AnyOneLinkOfTheChain) {
    for (const std::uint32_t number : {1U, 3U, 5U}) {
        for (const std::uint32_t value : {0U, 1U, 2U, 3U, 4U, 5U, 77U, none}) {
            SCOPED_TRACE(std::to_string(number) + " " + std::to_string(value));
            expectSaved(changed(Kind::linked, IN_ENTRY(number, next), value), {1, 3, 5});
            expectSaved(changed(Kind::linked, IN_ENTRY(number, prev), value), {1, 3, 5});
        }
    }
}

TEST_F(Salvage, MarksAndNumbers) {
    for (const std::uint32_t number : {1U, 3U, 5U}) {
        expectSaved(changed(Kind::linked, IN_ENTRY(number, entry.EntryId), 99U), {1, 3, 5});
    }
    expectSaved(changed(Kind::linked, IN_ENTRY(3, deleted), 1U), {1, 3, 5});
    expectSaved(changed(Kind::linked, IN_ENTRY(2, deleted), 0U), {1, 3, 5}); // stays deleted
    expectSaved(changed(Kind::simple, IN_ENTRY(2, entry.EntryId), 99U), {1, 2, 3});
    expectSaved(changed(Kind::simple, IN_ENTRY(2, deleted), 1U), {1, 2, 3});
}

// Nothing leads to entry 3 any more: it goes between what the ends lead to.
TEST_F(Salvage, OrphansByTime) {
    std::string bytes = bytesOf(Kind::linked);
    put(bytes, IN_ENTRY(1, next), 77U);
    put(bytes, IN_ENTRY(5, prev), 77U);
    expectSaved(bytes, {1, 3, 5});
    put(bytes, IN_ENTRY(3, entry.EntryId), 77U); // and nothing vouches for it
    expectSaved(bytes, {1, 5});
    // Without any order the times decide.
    put(bytes, IN_ENTRY(3, entry.EntryId), 3U);
    put(bytes, IN_ENTRY(1, prev), 77U);
    put(bytes, INFO(oldest), none);
    put(bytes, INFO(newest), none);
    put(bytes, IN_ENTRY(1, entry.Timestamp), std::int64_t{30});
    put(bytes, IN_ENTRY(3, entry.Timestamp), std::int64_t{20});
    put(bytes, IN_ENTRY(5, entry.Timestamp), std::int64_t{20});
    expectSaved(bytes, {3, 5, 1});
}

TEST_F(Salvage, HolesAreLeftOut) {
    std::string bytes = bytesOf(Kind::simple);
    bytes.replace(IN_ENTRY(2, deleted), 1496, std::string(1496, '\0'));
    expectSaved(bytes, {1, 3});
    expectSaved(bytesOf(Kind::simple).substr(0, 6064 + 2 * 1496 + 700), {1, 2});
    expectSaved(bytesOf(Kind::linked).substr(0, 6064 + 4 * 1496), {1, 3});
}

TEST_F(Salvage, AnInterruptedUpdateIsApplied) {
    const std::string bytes = bytesOf(Kind::interrupted);
    EXPECT_EQ(salvage(bytes).exitStatus, 1);
    const std::string after = readFile(saved);
    ASSERT_EQ(after.size(), 6064U + 4 * 1496);
    EXPECT_TRUE(payload(after, 3) == payload(bytes, 5));
    EXPECT_EQ(get<std::uint32_t>(after, IN_ENTRY(4, entry.Event.Source)), 6U);
    EXPECT_EQ(program::run({"check", saved}).exitStatus, 0);
}

// The update reaches behind the file's end, and the record that the file ends in lies between.
TEST_F(Salvage, ARecordThatTheFileEndsInIsNone) {
    const std::string bytes = bytesOf(Kind::interrupted).substr(0, 6064 + 2 * 1496 + 600);
    EXPECT_EQ(salvage(bytes).exitStatus, 3);
    const std::string after = readFile(saved);
    ASSERT_EQ(after.size(), 6064U + 3 * 1496);
    EXPECT_TRUE(payload(after, 1) == payload(bytes, 1));
    EXPECT_EQ(get<std::uint32_t>(after, IN_ENTRY(2, entry.Event.Source)), 5U);
    EXPECT_EQ(get<std::uint32_t>(after, IN_ENTRY(3, entry.Event.Source)), 6U);
}

// Ends and Size that say a ring of almost all the numbers there are: its three records are found
// once each, and the walk comes to an end.
TEST_F(Salvage, ARingOfAllNumbers) {
    constexpr std::uint32_t size = 0xFFFFFFFE;
    std::string bytes = bytesOf(Kind::circular);
    put(bytes, INFO(sa.Size), size);
    put(bytes, INFO(maxUsed), size);
    put(bytes, INFO(oldest), 131073U);
    put(bytes, INFO(newest), 2U);
    EXPECT_EQ(salvage(bytes).exitStatus, 3);
    const std::string after = readFile(saved);
    ASSERT_EQ(after.size(), 6064U + 2 * 1496);
    EXPECT_TRUE(payload(after, 1) == payload(bytes, 1));
    EXPECT_TRUE(payload(after, 2) == payload(bytes, 2));
}

TEST_F(Salvage, TheExitStatusIsThatOfTheCheck) {
    EXPECT_EQ(salvage(bytesOf(Kind::linked)).exitStatus, 0);
    EXPECT_EQ(salvage(changed(Kind::linked, INFO(sa.Enabled), std::uint8_t{9})).exitStatus, 1);
    EXPECT_EQ(salvage(changed(Kind::linked, INFO(oldest), 0U)).exitStatus, 3);
}

TEST_F(Salvage, AFileThatExistsIsLeftAlone) {
    writeFile(path, bytesOf(Kind::linked));
    writeFile(saved, "mine");
    const Result result = program::run({"check", "--salvage", saved, path});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "evtlogctl: " + saved + " exists already; name a new file\n");
    EXPECT_EQ(readFile(saved), "mine");
}

TEST_F(Salvage, WhatCannotBeSavedLeavesNothingBehind) {
    const Result shortFile = salvage("too short");
    EXPECT_EQ(shortFile.exitStatus, 3);
    EXPECT_EQ(shortFile.errors, "evtlogctl: " + path +
                                    " is shorter than an empty log, so there is nothing to save\n");
    EXPECT_FALSE(exists(saved));
    const std::string nowhere = folder.file("no/such/folder");
    const Result refused = program::run({"check", "--salvage", nowhere, path});
    EXPECT_EQ(refused.exitStatus, 3); // of the check: the log was not saved either
    writeFile(path, bytesOf(Kind::linked));
    const Result noFolder = program::run({"check", "--salvage", nowhere, path});
    EXPECT_EQ(noFolder.exitStatus, 4);
    EXPECT_EQ(noFolder.errors, "evtlogctl: " + nowhere +
                                   " cannot be made: No such file or directory; check the name "
                                   "and its permissions\n");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(Salvage, TheNewFileHasTheRightsOfTheOld) {
    writeFile(path, bytesOf(Kind::linked));
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    EXPECT_EQ(program::run({"check", "--salvage", saved, path}).exitStatus, 0);
    struct stat status {};
    ASSERT_EQ(stat(saved.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

} // namespace
