// Goal: every line of a resource's entry, and the lines that depend on its flags.

#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/records.h"
#include "zuSaHpi_util.h"

namespace {

Printed display(const SaHpiRptEntryT &rpt, const char *indent) {
    const auto copy = std::make_unique<SaHpiRptEntryT>(rpt);
    return printedBy(
        [&](zuSaHpiHandleT out) { return zuSaHpiRptDisplay(out, copy.get(), indent); });
}

SaHpiRptEntryT board() {
    SaHpiRptEntryT rpt{};
    rpt.EntryId = 0xFFFFFFFF;
    rpt.ResourceId = 5;
    rpt.ResourceInfo = {.ResourceRev = 255,
                        .SpecificVer = 2,
                        .DeviceSupport = 3,
                        .ManufacturerId = SAHPI_MANUFACTURER_ID_KORVANTIS,
                        .ProductId = 65535,
                        .FirmwareMajorRev = 4,
                        .FirmwareMinorRev = 5,
                        .AuxFirmwareRev = 254,
                        .Guid = {0xF0, 0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6, 0xF7, 0xF8, 0xF9, 0xFA,
                                 0xFB, 0xFC, 0xFD, 0xFE, 0x0F}};
    rpt.ResourceEntity = boardPath();
    rpt.ResourceCapabilities = 0x4000BF7F;
    rpt.HotSwapCapabilities = 0xC0000000;
    rpt.ResourceSeverity = SAHPI_CRITICAL;
    rpt.ResourceFailed = 0x80;
    rpt.ResourceTag = textBuffer(SAHPI_TL_TYPE_TEXT, "Board");
    return rpt;
}

TEST(RptEntry, EveryLine) {
    const Printed printed = display(board(), "  ");
    EXPECT_EQ(printed.text, expectedText("rpt_entry.txt"));
    EXPECT_EQ(printed.result, 1);
}

TEST(RptEntry, BareAndUnknown) {
    SaHpiRptEntryT rpt{};
    rpt.ResourceId = SAHPI_UNSPECIFIED_RESOURCE_ID;
    rpt.ResourceInfo.ManufacturerId = 0xFFFFFFFE;
    rpt.ResourceEntity = emptyPath();
    rpt.ResourceSeverity = static_cast<SaHpiSeverityT>(0x80000000);
    rpt.ResourceTag = textBuffer(SAHPI_TL_TYPE_BINARY, "", SAHPI_LANG_UNDEF);
    EXPECT_EQ(display(rpt, "").text, expectedText("rpt_entry_bare.txt"));
}

TEST(RptEntry, HotSwapCapabilitiesNeedManagedHotSwap) {
    SaHpiRptEntryT rpt = board();
    rpt.ResourceCapabilities = ~SAHPI_CAPABILITY_MANAGED_HOTSWAP;
    EXPECT_EQ(display(rpt, "").text.find("HotSwapCapabilities"), std::string::npos);
    rpt.ResourceCapabilities = SAHPI_CAPABILITY_MANAGED_HOTSWAP;
    rpt.HotSwapCapabilities = 0;
    EXPECT_NE(display(rpt, "").text.find("ResourceCapabilities = 0x00000800: Managed Hotswap\n"
                                         "HotSwapCapabilities  = 0x00000000\n"
                                         "ResourceSeverity = SAHPI_CRITICAL\n"),
              std::string::npos);
}

TEST(RptEntry, CapabilitiesWithoutANameLeaveOnlyTheMask) {
    SaHpiRptEntryT rpt = board();
    rpt.ResourceCapabilities = 0x80000000;
    EXPECT_NE(display(rpt, "").text.find("\nResourceCapabilities = 0x80000000: \nResourceSeverity"),
              std::string::npos);
}

// Names may end at column 70: the column of the list, ": " and the first name.
TEST(RptEntry, ListsBreakAtTheirColumns) {
    SaHpiRptEntryT rpt = board();
    rpt.ResourceCapabilities = SAHPI_CAPABILITY_MANAGED_HOTSWAP;
    rpt.HotSwapCapabilities = SAHPI_HS_CAPABILITY_INDICATOR_SUPPORTED;
    const auto textBehind = [&](const std::string &indent) {
        return display(rpt, indent.c_str()).text;
    };
    EXPECT_EQ(longestIndentFor("ResourceCapabilities = 0x00000800", textBehind),
              70U - (32 + 2) - 15);
    EXPECT_EQ(longestIndentFor("HotSwapCapabilities  = 0x40000000", textBehind),
              70U - (32 + 2) - 19);
}

TEST(RptEntry, ARunningResourceIsNotFlagged) {
    SaHpiRptEntryT rpt = board();
    rpt.ResourceFailed = SAHPI_FALSE;
    EXPECT_NE(display(rpt, "").text.find("\nResourceSeverity = SAHPI_CRITICAL\nResourceTag: \n"),
              std::string::npos);
}

TEST(RptEntry, TheIndentIsNoFormatAndNeverCut) {
    const std::string indent = "%s%n" + std::string(60, '-');
    const std::string text = display(board(), indent.c_str()).text;
    EXPECT_NE(text.find("\n" + indent + "             ProductId =        65535\n"),
              std::string::npos);
}

} // namespace
