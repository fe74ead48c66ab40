// Goal: every byte of a dump's layout, the folding of repeated lines exactly where 32 bytes
// compare equal, and one print call for each line.

#include <array>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/test_mainlib.h"
#include "util/hex_dump.h"
#include "zuSaHpi_util.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Dump {
    std::string text;
    int calls;
    int result;
};

Dump dumpOf(const Bytes &bytes, const char *prefix = "") {
    Dump dump{};
    const int callsBefore = test_mainlib::state().printCalls;
    dump.result = zuSaHpiDprint(test_mainlib::handleOf(dump.text), bytes.data(),
                                static_cast<std::uint32_t>(bytes.size()), prefix);
    dump.calls = test_mainlib::state().printCalls - callsBefore;
    return dump;
}

Bytes counting(std::size_t count) {
    Bytes bytes(count);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

// Lines of 16 bytes, each line filled with one value.
Bytes lines(const std::vector<int> &values) {
    Bytes bytes;
    for (const int value : values) {
        bytes.insert(bytes.end(), 16, static_cast<std::uint8_t>(value));
    }
    return bytes;
}

std::string zeroLine(const std::string &offset) {
    return offset + ": 00000000 00000000 00000000 00000000 |................|\n";
}

TEST(HexDump, NoBytes) {
    const Dump dump = dumpOf({}, "> ");
    EXPECT_EQ(dump.text, "> <null>\n");
    EXPECT_EQ(dump.result, 9);
}

TEST(HexDump, TheDataOfNoBytesMayBeNull) {
    std::string text;
    zuSaHpiDprint(test_mainlib::handleOf(text), nullptr, 0, "");
    EXPECT_EQ(text, "<null>\n");
}

TEST(HexDump, ShortFormsAreNotPadded) {
    EXPECT_EQ(dumpOf({0x41}).text, "41  |A|\n");
    EXPECT_EQ(dumpOf(counting(3)).text, "000102  |...|\n");
    EXPECT_EQ(dumpOf(counting(4)).text, "00010203   |....|\n");
    EXPECT_EQ(dumpOf({1, 2, 3, 4, 5}).text, "01020304 05  |.....|\n");
    EXPECT_EQ(dumpOf(counting(8)).text, "00010203 04050607   |........|\n");
    EXPECT_EQ(dumpOf(counting(15)).text, "00010203 04050607 08090a0b 0c0d0e  |...............|\n");
}

TEST(HexDump, SixteenBytesEndAsAFullLineWithoutOffset) {
    const Dump dump = dumpOf(counting(16), "pp");
    EXPECT_EQ(dump.text, "pp00010203 04050607 08090a0b 0c0d0e0f |................|\n");
    EXPECT_EQ(dump.calls, 1);
    EXPECT_EQ(dump.result, static_cast<int>(dump.text.size()));
}

TEST(HexDump, CharactersFromBlankToTildeAreThemselves) {
    EXPECT_EQ(dumpOf({0x1F, 0x20, 0x7E, 0x7F, 0x80, 0xFF, '%', 's'}).text,
              "1f207e7f 80ff2573   |. ~...%s|\n");
}

TEST(HexDump, SeventeenBytesHaveOffsetsPaddingAndAnEmptyLine) {
    const Dump dump = dumpOf(counting(17), "  ");
    EXPECT_EQ(dump.text, "  0000: 00010203 04050607 08090a0b 0c0d0e0f |................|\n"
                         "  0010: 10                                  |.               |\n"
                         "\n");
    EXPECT_EQ(dump.calls, 3);
    EXPECT_EQ(dump.result, 1);
}

TEST(HexDump, APartialLineKeepsTheBlanksBetweenGroups) {
    const std::string text = dumpOf(counting(16 + 9)).text;
    EXPECT_EQ(text.substr(text.find('\n') + 1),
              "0010: 10111213 14151617 18                |.........       |\n\n");
    const std::string longer = dumpOf(counting(16 + 12)).text;
    EXPECT_EQ(longer.substr(longer.find('\n') + 1),
              "0010: 10111213 14151617 18191a1b          |............    |\n\n");
}

TEST(HexDump, ThePrefixIsNoFormat) {
    EXPECT_EQ(dumpOf({0x25}, "%s%n").text, "%s%n25  |%|\n");
}

TEST(HexDump, FoldsSixtyFourZeros) {
    const Dump dump = dumpOf(Bytes(64), ">");
    EXPECT_EQ(dump.text, ">" + zeroLine("0000") +
                             ">     0010 - 002f   same as above          /                /\n" +
                             ">" + zeroLine("0030") + "\n");
    EXPECT_EQ(dump.calls, 4);
}

TEST(HexDump, FoldsFortyEightEqualLines) {
    EXPECT_EQ(dumpOf(Bytes(768)).text,
              zeroLine("0000") + "     0010 - 02ef   same as above          /                /\n" +
                  zeroLine("02f0") + "\n");
}

TEST(HexDump, ASingleRepeatIsPrinted) {
    EXPECT_EQ(dumpOf(Bytes(48)).text,
              zeroLine("0000") + zeroLine("0010") + zeroLine("0020") + "\n");
    const std::string text = dumpOf(lines({0, 0, 0, 1, 2})).text;
    EXPECT_EQ(text.find("same as above"), std::string::npos);
}

TEST(HexDump, ComparesThirtyTwoBytes) {
    // Lines 0 to 3 are equal, line 4 differs: blocks at 16 and 32 repeat, the one at 48 does not.
    const std::string text = dumpOf(lines({0, 0, 0, 0, 1})).text;
    EXPECT_EQ(text, zeroLine("0000") +
                        "     0010 - 002f   same as above          /                /\n" +
                        zeroLine("0030") +
                        "0040: 01010101 01010101 01010101 01010101 |................|\n\n");
}

TEST(HexDump, TheEndOfTheDataIsPrintedInFull) {
    Bytes bytes(64 + 15);
    EXPECT_EQ(dumpOf(bytes).text,
              zeroLine("0000") + "     0010 - 002f   same as above          /                /\n" +
                  zeroLine("0030") +
                  "0040: 00000000 00000000 00000000 000000   |............... |\n\n");
}

TEST(HexDump, FoldsTwiceInOneDump) {
    EXPECT_EQ(dumpOf(lines({0, 0, 0, 0, 1, 1, 1, 1})).text,
              zeroLine("0000") + "     0010 - 002f   same as above          /                /\n" +
                  zeroLine("0030") +
                  "0040: 01010101 01010101 01010101 01010101 |................|\n"
                  "     0050 - 006f   same as above          /                /\n"
                  "0070: 01010101 01010101 01010101 01010101 |................|\n\n");
}

TEST(HexDump, OffsetsGrowPastFourDigits) {
    Bytes bytes(0x10000 + 32);
    bytes[0xFFF0] = 1;
    EXPECT_EQ(dumpOf(bytes).text,
              zeroLine("0000") + "     0010 - ffdf   same as above          /                /\n" +
                  zeroLine("ffe0") +
                  "fff0: 01000000 00000000 00000000 00000000 |................|\n" +
                  zeroLine("10000") + zeroLine("10010") + "\n");
}

// The folding rule as it reads: after the line at s, k moves on from n while the 32 bytes at s and
// at k are equal and k does not pass length - 32.
std::vector<std::pair<long, long>> expectedFolds(const Bytes &bytes) {
    std::vector<std::pair<long, long>> folds;
    const auto length = static_cast<long>(bytes.size());
    for (long s = 0; s + 16 <= length;) {
        const long n = s + 16;
        long k = n;
        while (k <= length - 32 && std::equal(&bytes[static_cast<std::size_t>(s)],
                                              &bytes[static_cast<std::size_t>(s)] + 32,
                                              &bytes[static_cast<std::size_t>(k)])) {
            k += 16;
        }
        s = n;
        if (k > n + 16) {
            folds.emplace_back(n, k - 1);
            s = k;
        }
    }
    return folds;
}

std::vector<std::pair<long, long>> printedFolds(const std::string &text) {
    std::vector<std::pair<long, long>> folds;
    for (std::size_t at = 0; (at = text.find("     ", at)) != std::string::npos; ++at) {
        unsigned first = 0;
        unsigned last = 0;
        if (std::sscanf(&text[at], " %x - %x   same as above", &first, &last) == 2 &&
            (at == 0 || text[at - 1] == '\n')) {
            folds.emplace_back(first, last);
        }
    }
    return folds;
}

TEST(HexDump, FoldsByTheRuleOnRandomRuns) {
    const unsigned seed = 20'260'101;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::size_t folds = 0;
    for (int round = 0; round < 300; ++round) {
        Bytes bytes;
        const auto count = random() % 20;
        for (unsigned line = 0; line < count; ++line) {
            bytes.insert(bytes.end(), 16, static_cast<std::uint8_t>(random() % 5 == 0));
        }
        bytes.resize(bytes.size() + random() % 16);
        if (bytes.size() <= 16) {
            continue;
        }
        const auto expected = expectedFolds(bytes);
        folds += expected.size();
        EXPECT_EQ(printedFolds(dumpOf(bytes).text), expected);
    }
    EXPECT_GT(folds, 100U);
}

TEST(HexDump, TheLongestLineFits) {
    EXPECT_LT(
        std::string_view("ffffffff: 00000000 00000000 00000000 00000000 |................|").size(),
        zusahpi::hexDumpLineSize);
    EXPECT_LT(std::string_view("     ffffffff - ffffffff   same as above          /"
                               "                /")
                  .size(),
              zusahpi::hexDumpLineSize);
}

} // namespace
