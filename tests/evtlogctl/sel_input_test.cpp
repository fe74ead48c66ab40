// Goal: records come out of raw and text files in every form, whole or not at all; what is no
// record is reported with its place.
#include "tools/evtlogctl/sel_input.h"

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"

namespace {

using namespace zusahpi::sel;
using sel_samples::dataFile;
using sel_samples::recordsOf;
using test_support::readFile;

const Record sample{{0x01, 0x00, 0x02, 0x2A, 0xB3, 0xC6, 0x67, 0x41, 0x00, 0x04, 0x09, 0x01, 0xEF,
                     0x00, 0xFF, 0xAF}};
const std::string spaced = "01 00 02 2a b3 c6 67 41 00 04 09 01 ef 00 ff af";
const std::string digits = "0100022ab3c6674100040901ef00ffaf";

Input text(const std::string &data) {
    return readRecords(data, Form::text);
}

TEST(SelInput, EveryTextFormOfALine) {
    for (const std::string &line : std::vector<std::string>{
             spaced,
             digits,
             "SEL Entry: " + digits,
             std::string("0100 022a b3c6 6741 0004 0901 ef00 ffaf"),
             "00000010: 0100 022a b3c6 6741 0004 0901 ef00 ffaf  ...*..gA........",
             "00000010  " + spaced + "  |...*..gA........|",
             "0001 " + spaced,
             "[Evt_data] " + spaced,
             "\t" + spaced + " \r",
             std::string("0x01,0x00,0x02,0x2A,0xB3,0xC6,0x67,0x41,0x00,0x04,0x09,0x01,0xEF,0x00,"
                         "0xFF,0xAF"),
             std::string("01h 00h 02h 2Ah B3h C6h 67h 41h 00h 04h 09h 01h EFh 00h FFh AFh"),
             std::string("RID:[01][00] RT:[02] TS:[2a][b3][c6][67] GID:[41][00] ER:[04] ST:[09] "
                         "SN:[01] EDIR:[EF] ED1:[00] ED2:[ff] ED3:[af]"),
             std::string("RID[01][00] RT[02] TS[2a][b3][c6][67] GID[41][00] ER[04] ST[09] SN[01] "
                         "EDIR[EF] ED1[00] ED2[ff] ED3[af]"),
         }) {
        EXPECT_EQ(recordInLine(line), sample) << line;
        const Input input = text(line + "\n");
        EXPECT_EQ(input.records, std::vector{sample}) << line;
        EXPECT_TRUE(input.problems.empty()) << line;
    }
}

TEST(SelInput, TheFirstSixteenInARowCount) {
    EXPECT_EQ(recordInLine(spaced + " 11 22 33"), sample);
}

TEST(SelInput, OtherLinesArePassedOver) {
    const Input input = text("SEL Information\n\n# 01 00 02 2a b3 c6 67 41 00 04 09 01 ef 00 ff\n"
                             "Free Space : 0x20, 3 bytes\nSEL Next ID: 0002\n  12/19/23 04:16:51 "
                             "[00 ff ff]\n" +
                             spaced + "\nend\n");
    EXPECT_EQ(input.records, std::vector{sample});
    EXPECT_TRUE(input.problems.empty());
}

TEST(SelInput, ABrokenRecordIsAProblemAndTheRestIsRead) {
    const Input input = text(spaced + "\nSEL Entry: 0100022ab3\n" + digits + "\n");
    EXPECT_EQ(input.records, (std::vector{sample, sample}));
    ASSERT_EQ(input.problems.size(), 1U);
    EXPECT_EQ(input.problems[0].offset, spaced.size() + 1);
    EXPECT_EQ(input.problems[0].line, 2U);
    EXPECT_EQ(input.problems[0].what, "a record of 5 bytes instead of 16");
}

TEST(SelInput, ATextCutAtAnyPlaceKeepsWhatIsBefore) {
    const std::string whole = "SEL Entry: " + digits + "\nSEL Entry: " + digits + "\n";
    const std::size_t half = whole.size() / 2;
    for (std::size_t cut = half + 1; cut + 1 < whole.size(); ++cut) {
        const Input input = text(whole.substr(0, cut));
        const std::size_t offset = half;
        EXPECT_EQ(input.records, std::vector{sample}) << cut;
        ASSERT_EQ(input.problems.size(), 1U) << cut;
        EXPECT_EQ(input.problems[0].offset, offset) << cut;
        EXPECT_EQ(input.problems[0].line, 2U) << cut;
    }
}

TEST(SelInput, HalfAByteAtTheEndIsNoRecord) {
    const Input input = text("SEL Entry: " + digits.substr(0, digits.size() - 1) + "\n");
    EXPECT_TRUE(input.records.empty());
    ASSERT_EQ(input.problems.size(), 1U);
    EXPECT_EQ(input.problems[0].what, "a record of 15 bytes instead of 16");
}

TEST(SelInput, MoreDigitsThanARecordAreNoRecord) {
    EXPECT_EQ(recordInLine(digits + "00"), std::nullopt);
}

TEST(SelInput, RawRecordsAndAShortTail) {
    const std::string bytes = sel_samples::bytesOf({sample, sample});
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const Input input = readRecords(bytes.substr(0, size), Form::raw);
        EXPECT_EQ(input.records, std::vector<Record>(size / 16, sample));
        if (size % 16 == 0) {
            EXPECT_TRUE(input.problems.empty());
            continue;
        }
        ASSERT_EQ(input.problems.size(), 1U);
        EXPECT_EQ(input.problems[0].offset, size / 16 * 16);
        EXPECT_EQ(input.problems[0].line, 0U);
        EXPECT_EQ(input.problems[0].what,
                  "a record of " + std::to_string(size % 16) + " bytes instead of 16");
    }
}

TEST(SelInput, FormIsFoundByLookingAtTheData) {
    for (const std::string &file : sel_samples::sampleFiles()) {
        EXPECT_EQ(readRecords(readFile(file), Form::automatic).form, Form::raw) << file;
    }
    for (const char *file : {"sel-entries.txt", "spaced-bytes.txt", "labelled-bytes.txt"}) {
        EXPECT_EQ(readRecords(readFile(dataFile(file)), Form::automatic).form, Form::text) << file;
    }
    EXPECT_EQ(readRecords(sel_samples::bytesOf({sample}).substr(0, 5), Form::automatic).form,
              Form::raw);
    EXPECT_EQ(readRecords("\xC3\xA9t\xC3\xA9\n" + spaced, Form::automatic).form, Form::text);
}

TEST(SelInput, FormCanBeForced) {
    EXPECT_EQ(readRecords(spaced, Form::raw).records.size(), spaced.size() / 16);
    EXPECT_TRUE(readRecords(sel_samples::bytesOf({sample}), Form::text).records.empty());
}

TEST(SelInput, TextFilesHoldTheRecordsOfTheRawOnes) {
    EXPECT_EQ(recordsOf(dataFile("sel-entries.txt")), recordsOf(dataFile("session-audit-10.sel")));
    EXPECT_EQ(recordsOf(dataFile("spaced-bytes.txt")), recordsOf(dataFile("misc-30.sel")));
    const auto all = recordsOf(dataFile("misc-30.sel"));
    EXPECT_EQ(recordsOf(dataFile("labelled-bytes.txt")), (std::vector{all.at(22), all.at(23)}));
}

TEST(SelInput, NoDataAreNoRecords) {
    for (const Form form : {Form::automatic, Form::raw, Form::text}) {
        const Input input = readRecords("", form);
        EXPECT_TRUE(input.records.empty());
        EXPECT_TRUE(input.problems.empty());
    }
}

TEST(SelInput, RandomBytesNeverBreakTheReader) {
    std::mt19937_64 random(20231219);
    for (int i = 0; i < 2000; ++i) {
        std::string data(sel_samples::below(100, random), '\0');
        for (char &each : data) {
            constexpr std::string_view likely = "0123456789abcdefxh[], \r\n\t#";
            each = random() % 8 == 0 ? static_cast<char>(random())
                                     : likely[sel_samples::below(likely.size(), random)];
        }
        for (const Form form : {Form::automatic, Form::raw, Form::text}) {
            const Input input = readRecords(data, form);
            EXPECT_LE(input.records.size() * 16, data.size());
            for (const Problem &problem : input.problems) {
                EXPECT_LT(problem.offset, data.size());
            }
        }
    }
}

TEST(SelInput, VotesForTheOrderOfManufacturerIds) {
    const OrderVotes wire = orderVotes(recordsOf(sel_samples::exampleFile("server.sel")));
    EXPECT_EQ(wire.wire, 135U);
    EXPECT_EQ(wire.reversed, 0U);
    const OrderVotes reversed = orderVotes(recordsOf(dataFile("ipmitool-order.sel")));
    EXPECT_EQ(reversed.wire, 0U);
    EXPECT_EQ(reversed.reversed, 6U);
}

TEST(SelInput, OnlyTellingRecordsVote) {
    const OrderVotes votes = orderVotes({
        sel_samples::record("01 00 c0 00 00 00 00 01 00 01 00 00 00 00 00 00"), // both possible
        sel_samples::record("01 00 c0 00 00 00 00 ff 00 ff 00 00 00 00 00 00"), // none possible
        sel_samples::record("01 00 02 00 00 00 00 01 00 ff 00 00 00 00 00 00"), // no OEM record
        sel_samples::record("01 00 e0 00 00 00 00 01 00 ff 00 00 00 00 00 00"), // without an id
    });
    EXPECT_EQ(votes.wire, 0U);
    EXPECT_EQ(votes.reversed, 0U);
}

} // namespace
