// Goal: the names of a mask's bits, their separators and where the line is wrapped, to the column.

#include <climits>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "zuSaHpi_util.h"

namespace {

constexpr uint32_t threshold = 0x01000015;
constexpr uint32_t capabilities = 46;
constexpr uint32_t hsCapabilities = 4;

Printed flags(uint32_t mask, uint32_t typeId, const char *prefix, int startColumn = 0,
              int wrapIndent = 0, const char *indent = "") {
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiBitFlagsDisplay(out, mask, typeId, prefix, startColumn, wrapIndent, indent);
    });
}

TEST(BitFlags, AnEmptyMaskEndsTheLine) {
    const Printed printed = flags(0, threshold, "SAHPI_ES_", 10, 4, ">>");
    EXPECT_EQ(printed.text, "\n");
    EXPECT_EQ(printed.result, 1);
    EXPECT_EQ(printed.calls, 1);
}

TEST(BitFlags, NamesTheBitsLowestFirst) {
    const Printed printed = flags(0x25, threshold, "SAHPI_ES_");
    EXPECT_EQ(printed.text, ": Lower Minor, Lower Crit, Upper Crit\n");
    EXPECT_EQ(printed.result, 1);
}

TEST(BitFlags, ASeparatorIsLeftBeforeUnnamedHighBits) {
    EXPECT_EQ(flags(0x41, threshold, "SAHPI_ES_").text, ": Lower Minor, \n");
    EXPECT_EQ(flags(0x80000041, threshold, "SAHPI_ES_").text, ": Lower Minor, \n");
}

TEST(BitFlags, UnnamedLowBitsLeaveNothing) {
    EXPECT_EQ(flags(0x80 | 0x100, capabilities, "SAHPI_CAPABILITY_").text, ": Fru\n");
    EXPECT_EQ(flags(0x80, capabilities, "SAHPI_CAPABILITY_").text, ": \n");
    EXPECT_EQ(flags(0x80000080, threshold, "SAHPI_ES_").text, ": \n");
}

TEST(BitFlags, ANameOfAnotherPrefixCountsAsUnnamed) {
    EXPECT_EQ(flags(0x3, threshold, "SAHPI_CAPABILITY_").text, ": \n");
}

TEST(BitFlags, TheHighestBitIsNotSignExtended) {
    EXPECT_EQ(flags(0xC0000000, hsCapabilities, "SAHPI_HS_CAPABILITY_").text,
              ": Indicator Supported, Autoextract Read Only\n");
}

TEST(BitFlags, ANameMayEndAtColumnSeventy) {
    // "Lower Minor" has 11 characters, ": " has 2.
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", 57, 3).text, ": Lower Minor\n");
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", 58, 3).text, ": \n   Lower Minor\n");
}

TEST(BitFlags, TheIndentCountsTowardsTheColumn) {
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", 55, 3, "..").text, ": Lower Minor\n");
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", 56, 3, "..").text, ": \n..   Lower Minor\n");
}

TEST(BitFlags, TheSeparatorCountsTowardsTheColumn) {
    // ": Lower Minor, " and the 11 characters of "Lower Major" make 26.
    EXPECT_EQ(flags(3, threshold, "SAHPI_ES_", 44, 3).text, ": Lower Minor, Lower Major\n");
    EXPECT_EQ(flags(3, threshold, "SAHPI_ES_", 45, 3).text, ": Lower Minor, \n   Lower Major\n");
}

TEST(BitFlags, AContinuationLineIsWrappedInItsTurn) {
    EXPECT_EQ(flags(0xFFFFFFFF, capabilities, "SAHPI_CAPABILITY_", 24, 8, "  ").text,
              ": Sensor, Rdr, Event Log, Inventory Data, \n"
              "          Reset, Power, Annunciator, Fru, Control, Watchdog, \n"
              "          Managed Hotswap, Configuration, Aggregate Status, \n"
              "          Evt Deasserts, Resource, \n");
    // Indent, wrap indent and "Lower Minor, Lower Major" make 70 here, and 71 with one more.
    EXPECT_EQ(flags(7, threshold, "SAHPI_ES_", 70, 46).text,
              ": \n" + std::string(46, ' ') + "Lower Minor, Lower Major, \n" +
                  std::string(46, ' ') + "Lower Crit\n");
    EXPECT_EQ(flags(3, threshold, "SAHPI_ES_", 70, 47).text,
              ": \n" + std::string(47, ' ') + "Lower Minor, \n" + std::string(47, ' ') +
                  "Lower Major\n");
}

TEST(BitFlags, AnyStartColumnIsTaken) {
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", INT_MAX, 0, ">").text, ": \n>Lower Minor\n");
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", INT_MIN, 0, ">").text, ": Lower Minor\n");
}

TEST(BitFlags, TheIndentIsNoFormat) {
    EXPECT_EQ(flags(1, threshold, "SAHPI_ES_", 70, 1, "%s%n").text, ": \n%s%n Lower Minor\n");
}

} // namespace
