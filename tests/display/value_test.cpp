// Goal: a value's line and a value's text, known and unknown, whole and cut to every size.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "zuSaHpi_util.h"

namespace {

Printed displayed(const char *label, uint32_t low, uint32_t high, uint32_t typeId,
                  const char *prefix, const char *indent) {
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiValueDisplay(out, label, low, high, typeId, prefix, indent);
    });
}

std::string stringOf(uint32_t low, uint32_t high, uint32_t typeId, const char *prefix,
                     uint32_t size = 50) {
    std::vector<char> dest(size + 1, '#');
    EXPECT_EQ(zuSaHpiValueString(low, high, typeId, prefix, dest.data(), size), dest.data());
    EXPECT_EQ(dest[size], '#');
    return dest.data();
}

TEST(ValueDisplay, PrintsNumberAndWords) {
    const Printed printed = displayed("Severity   ", 1, 0, 16, "SAHPI_", "  ");
    EXPECT_EQ(printed.text, "  Severity    1: Major\n");
    EXPECT_EQ(printed.result, static_cast<int>(std::string(": Major\n").size()));
}

TEST(ValueDisplay, AnUnknownValueStandsAlone) {
    const Printed printed = displayed("Severity", 99, 0, 16, "SAHPI_", "");
    EXPECT_EQ(printed.text, "Severity 99\n");
    EXPECT_EQ(printed.result, 1);
}

TEST(ValueDisplay, ANameOfAnotherPrefixIsNotShown) {
    EXPECT_EQ(displayed("Type", 1, 0, 31, "SAHPI_ES_", "").text, "Type 1\n");
}

TEST(ValueDisplay, TheNumberIsTheUnsignedLowWord) {
    EXPECT_EQ(displayed("Id", 0xFFFFFFFF, 0, 53, "SAHPI_", "").text,
              "Id 4294967295: Unspecified Resource Id\n");
    EXPECT_EQ(displayed("Timeout", 0xFFFFFFFF, 0xFFFFFFFF, 37, "SAHPI_TIMEOUT_", "").text,
              "Timeout 4294967295: Block\n");
    EXPECT_EQ(displayed("Timeout", 0xFFFFFFFF, 0, 16, "SAHPI_", "").text, "Timeout 4294967295\n");
}

TEST(ValueDisplay, LabelAndIndentAreNoFormats) {
    EXPECT_EQ(displayed("%s%n", 4, 0, 16, "SAHPI_", "%d%%").text, "%d%%%s%n 4: Ok\n");
}

TEST(ValueString, GivesTheDisplayForm) {
    EXPECT_EQ(stringOf(0x10, 0, 0x01000015, "SAHPI_ES_"), "Upper Major");
    EXPECT_EQ(stringOf(1, 0, 31, "SAHPI_"), "Temperature");
    EXPECT_EQ(stringOf(0x5F39, 0, 23, "SAHPI_MANUFACTURER_ID_"), "Korvantis");
}

TEST(ValueString, OtherTextsStayUnchanged) {
    EXPECT_EQ(stringOf(1, 0, 31, "SAHPI_ES_"), "SAHPI_TEMPERATURE");
    EXPECT_EQ(stringOf(0x30, 0, 0x01000015, "SAHPI_ES_"), "48");
    EXPECT_EQ(stringOf(1, 1, 31, "SAHPI_"), "4294967297");
    EXPECT_EQ(stringOf(0, 0x80000000, 42, "SAHPI_TIME_"), "Unspecified");
    EXPECT_EQ(stringOf(0, 1, 42, "SAHPI_TIME_"), "time(4294967296,0)");
}

TEST(ValueString, IsCutToEverySize) {
    const std::string whole = "Upper Major";
    for (uint32_t size = 1; size <= 60; ++size) {
        EXPECT_EQ(stringOf(0x10, 0, 0x01000015, "SAHPI_ES_", size), whole.substr(0, size - 1));
        EXPECT_EQ(stringOf(0x10, 0, 0x01000015, "OTHER_", size),
                  std::string("SAHPI_ES_UPPER_MAJOR").substr(0, size - 1));
    }
}

TEST(ValueString, NothingIsWrittenIntoNoBytes) {
    char untouched = '#';
    EXPECT_EQ(zuSaHpiValueString(1, 0, 31, "SAHPI_", &untouched, 0), &untouched);
    EXPECT_EQ(untouched, '#');
}

} // namespace
