// Goal: dumps to the system log have the lines of every other dump, each at the priority given, and
// no empty line at the end.

#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/test_mainlib.h"
#include "zuSaHpi_util.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::pair<int, std::string>>;

Lines dumpOf(const Bytes &bytes, int priority = 5) {
    test_mainlib::state().syslog.clear();
    syslogDump(priority, bytes.data(), static_cast<uint32_t>(bytes.size()));
    return test_mainlib::state().syslog;
}

TEST(SyslogDump, NoBytesWriteNothing) {
    EXPECT_EQ(dumpOf({}), Lines{});
    syslogDump(5, nullptr, 0);
    EXPECT_EQ(test_mainlib::state().syslog, Lines{});
}

TEST(SyslogDump, ShortDumpsAreOneLineWithoutOffset) {
    EXPECT_EQ(dumpOf({1, 2, 3, 4, 5}, 3), (Lines{{3, "01020304 05  |.....|\n"}}));
    Bytes bytes(16);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0x41});
    EXPECT_EQ(dumpOf(bytes, 0),
              (Lines{{0, "41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP|\n"}}));
}

TEST(SyslogDump, LongerDumpsHaveOffsetsAndPadding) {
    Bytes bytes(18);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0x30});
    EXPECT_EQ(dumpOf(bytes, 7),
              (Lines{{7, "0000: 30313233 34353637 38393a3b 3c3d3e3f |0123456789:;<=>?|\n"},
                     {7, "0010: 4041                                |@A              |\n"}}));
}

TEST(SyslogDump, FoldsRepeatedLines) {
    EXPECT_EQ(dumpOf(Bytes(64)),
              (Lines{{5, "0000: 00000000 00000000 00000000 00000000 |................|\n"},
                     {5, "     0010 - 002f   same as above          /                /\n"},
                     {5, "0030: 00000000 00000000 00000000 00000000 |................|\n"}}));
}

TEST(SyslogDump, DataAreNoFormat) {
    EXPECT_EQ(dumpOf({'%', 'n'}), (Lines{{5, "256e  |%n|\n"}}));
}

TEST(SyslogDump, HasTheLinesOfThePrintersDump) {
    const unsigned seed = 20'260'102;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 100; ++round) {
        Bytes bytes;
        for (auto line = random() % 12; line > 0; --line) {
            bytes.insert(bytes.end(), 16, static_cast<std::uint8_t>(random() % 4 == 0));
        }
        bytes.resize(bytes.size() + 1 + random() % 16);
        std::string printed;
        zuSaHpiDprint(test_mainlib::handleOf(printed), bytes.data(),
                      static_cast<uint32_t>(bytes.size()), "");
        std::string logged;
        for (const auto &[priority, text] : dumpOf(bytes)) {
            EXPECT_EQ(text.find('\n'), text.size() - 1);
            logged += text;
        }
        EXPECT_EQ(printed, logged + (bytes.size() > 16 ? "\n" : ""));
    }
}

} // namespace
