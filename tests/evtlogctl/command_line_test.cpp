// Goal: offsets from UTC are read in the one form that they have, and nothing else is.
#include "tools/evtlogctl/command_line.h"

#include <gtest/gtest.h>

namespace {

using zusahpi::evtlogctl::parseUtcOffset;

TEST(CommandLine, UtcOffsets) {
    EXPECT_EQ(parseUtcOffset("Z"), 0);
    EXPECT_EQ(parseUtcOffset("+00:00"), 0);
    EXPECT_EQ(parseUtcOffset("+01:00"), 60);
    EXPECT_EQ(parseUtcOffset("-01:00"), -60);
    EXPECT_EQ(parseUtcOffset("-09:30"), -570);
    EXPECT_EQ(parseUtcOffset("+05:45"), 345);
    EXPECT_EQ(parseUtcOffset("+14:00"), 840);
    EXPECT_EQ(parseUtcOffset("-14:00"), -840);
}

TEST(CommandLine, TextsThatAreNoUtcOffset) {
    for (const char *text : {"", "0", "z", "01:00", "+1:00", "+01:60", "+14:01", "+99:00", "+0100",
                             "+01:00 ", " +01:00", "+01-00", "+0x:00", "+01:0", "++1:00"}) {
        EXPECT_EQ(parseUtcOffset(text), std::nullopt) << text;
    }
}

} // namespace
