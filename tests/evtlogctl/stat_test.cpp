// Goal: evtlogctl stat shows how full a log is and its counts as tables that fit the terminal, and
// says what it left out; a damaged log is counted as far as it can be read.
#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tests/support/times.h"

namespace {

using program::Result;
using sample_logs::Kind;
using sample_logs::put;
using test_support::ScratchFolder;
using test_support::writeFile;
using times::hour;

constexpr SaHpiTimeT moment = 1'700'000'000'000'000'000; // of all sample entries

class Stat : public testing::Test {
  protected:
    Result stat(const std::string &bytes, std::vector<std::string> options = {}) {
        writeFile(path, bytes);
        options.insert(options.begin(), {"--utc", "stat", path});
        return program::run(options);
    }
    std::string expectDone(const std::string &bytes, const std::vector<std::string> &options = {}) {
        const Result result = stat(bytes, options);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    ScratchFolder folder;
    std::string path = folder.file("log");
};

// The sample entries 1, 2, 3: a user event, a software event and one of a fan's sensor.
TEST_F(Stat, AWholeOutput) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    put(bytes, IN_ENTRY(2, entry.Event.Timestamp), moment + 12 * hour);
    put(bytes, IN_ENTRY(3, entry.Event.Timestamp), moment + 24 * hour);
    put(bytes, IN_ENTRY(3, entry.Event.Severity), SAHPI_CRITICAL);
    EXPECT_EQ(expectDone(bytes), "File        " + path + R"(
Filled      [########################                ] 60 %, 3 of 5 entries
When full   drop
Overflowed  no
Events      2023-11-14T22:13:20Z to 2023-11-15T22:13:20Z, 24.0 hours

entries  per hour  first             last                            severity
      2     0.083  2023-11-14T22:13  2023-11-15T10:13  ############  minor
      1     0.042  2023-11-15T22:13  2023-11-15T22:13  ######        critical

entries  per hour  first             last                            event type
      1     0.042  2023-11-15T22:13  2023-11-15T22:13  ############  sensor
      1     0.042  2023-11-15T10:13  2023-11-15T10:13  ############  hpi_sw
      1     0.042  2023-11-14T22:13  2023-11-14T22:13  ############  user

entries  per hour  first             last                            source
      1     0.042  2023-11-15T22:13  2023-11-15T22:13  ############  Shelf
      1     0.042  2023-11-14T22:13  2023-11-14T22:13  ############  resource 1
      1     0.042  2023-11-15T10:13  2023-11-15T10:13  ############  resource 2

entries  per hour  first             last                            sensor
      1     0.042  2023-11-15T22:13  2023-11-15T22:13  ############  Shelf: Fan speed
)");
}

TEST_F(Stat, ALongerLogHasRatesByTheDay) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    put(bytes, IN_ENTRY(3, entry.Event.Timestamp), moment + 48 * hour);
    const std::string output = expectDone(bytes);
    EXPECT_NE(output.find("2023-11-16T22:13:20Z, 2 days\n"), std::string::npos) << output;
    EXPECT_NE(output.find("\nentries   per day  first       last  "), std::string::npos);
    EXPECT_NE(output.find("\n      3       1.5  2023-11-14  2023-11-16  "), std::string::npos);
}

TEST_F(Stat, TimesThatAreNoneAreInNoRate) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    for (const std::uint32_t number : {1U, 2U}) {
        put(bytes, IN_ENTRY(number, entry.Event.Timestamp), SAHPI_TIME_UNSPECIFIED);
    }
    put(bytes, IN_ENTRY(3, entry.Event.Timestamp), 5 * hour);
    const std::string output = expectDone(bytes);
    EXPECT_NE(output.find("Events      no entry has a time of day\n"
                          "            1 with a time since the start of the controller: in no "
                          "rate\n"
                          "            2 without a time: in no rate\n"),
              std::string::npos)
        << output;
    EXPECT_NE(output.find("\n      3         -  -                 -                 ####"),
              std::string::npos)
        << output;
}

TEST_F(Stat, RowsLeftOutAreCounted) {
    const std::string bytes = sample_logs::bytesOf(Kind::simple);
    const std::string two = expectDone(bytes, {"-n", "2"});
    EXPECT_NE(two.find("  hpi_sw\n      1  in 1 more; --all shows every one\n"), std::string::npos)
        << two;
    const std::string none = expectDone(bytes, {"--rows=0"});
    EXPECT_NE(none.find("  source\n      3  in 3 more; --all shows every one\n"),
              std::string::npos);
    EXPECT_EQ(expectDone(bytes, {"--all"}), expectDone(bytes));
    EXPECT_EQ(program::run({"stat", "--all", "-n", "2", path}).exitStatus, 2);
}

TEST_F(Stat, AnEmptyLog) {
    const std::string empty(6064, '\0'); // of type Simple and of no size
    std::string bytes = empty;
    put(bytes, offsetof(EventLogInfoRecord, oldest), ZUSAHPI_EL_NO_ENTRY);
    put(bytes, offsetof(EventLogInfoRecord, newest), ZUSAHPI_EL_NO_ENTRY);
    const std::string output = expectDone(bytes);
    EXPECT_NE(output.find("[                                        ] 100 %, 0 of 0 entries\n"),
              std::string::npos);
    EXPECT_TRUE(output.ends_with("Events      no entry has a time of day\n")) << output;
}

// Numbers of a damaged info record make no bar longer than it may be.
TEST_F(Stat, MoreEntriesThanFit) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    put(bytes, offsetof(EventLogInfoRecord, sa.Size), std::uint32_t{1});
    const Result result = stat(bytes);
    EXPECT_NE(result.output.find("[########################################] 300 %, 3 of 1"),
              std::string::npos)
        << result.output;
}

TEST_F(Stat, ADamagedLogIsCountedToTheDamage) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    put(bytes, IN_ENTRY(1, entry.EntryId), std::uint32_t{9});
    const Result result = stat(bytes);
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_NE(result.output.find("\n      2         -"), std::string::npos) << result.output;
    EXPECT_EQ(result.errors, "evtlogctl: " + path +
                                 " is damaged: entry 1 calls itself 9; only the entries after that "
                                 "are counted\n");
}

TEST_F(Stat, WhatIsNoLog) {
    const Result result = stat("short");
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.output, "");
}

// Whatever a name holds, it is printable here, and it is not cut.
TEST_F(Stat, NamesOfEveryByte) {
    for (int first = 0; first < 256; first += 128) {
        std::string bytes = sample_logs::bytesOf(Kind::simple);
        const std::size_t buffer = IN_ENTRY(3, rdr.IdString);
        std::string name;
        for (int byte = first; byte < first + 128; ++byte) {
            name += static_cast<char>(byte);
        }
        put(bytes, buffer + offsetof(SaHpiTextBufferT, DataLength), std::uint8_t{128});
        bytes.replace(buffer + offsetof(SaHpiTextBufferT, Data), name.size(), name);
        const std::string output = expectDone(bytes);
        for (const char letter : output) {
            EXPECT_TRUE((letter >= ' ' && letter <= '~') || letter == '\n');
        }
        const std::size_t row = output.rfind("Shelf: ");
        EXPECT_EQ(output.size() - row, 7U + 128U + 1U);
    }
}

// Bars take the room that the terminal has.
TEST_F(Stat, AWideTerminal) {
    writeFile(path, sample_logs::bytesOf(Kind::simple));
    const Result result = program::talkOnTerminal({"stat", path}, {});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.output.find("  " + std::string(12, '#') + "  Shelf\r"), std::string::npos)
        << result.output;
    const Result wide = program::talkOnTerminal({"stat", path}, {}, "dumb", 200);
    EXPECT_NE(wide.output.find("  " + std::string(40, '#') + "  Shelf"), std::string::npos);
}

} // namespace
