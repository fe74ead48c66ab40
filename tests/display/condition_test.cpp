// Goal: every line of a condition, which of them its type and its fields call for, and names of
// every length.

#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/records.h"
#include "zuSaHpi_util.h"

namespace {

// A condition of the type and nothing else; unused bytes are not 0.
SaHpiConditionT conditionOf(uint32_t type) {
    SaHpiConditionT condition;
    std::memset(&condition, 0xA5, sizeof condition);
    condition.Type = static_cast<SaHpiStatusCondTypeT>(type);
    condition.Entity = emptyPath();
    condition.DomainId = SAHPI_UNSPECIFIED_DOMAIN_ID;
    condition.ResourceId = SAHPI_UNSPECIFIED_RESOURCE_ID;
    condition.Name.Length = 0;
    condition.Data = textBuffer(SAHPI_TL_TYPE_TEXT, "");
    return condition;
}

SaHpiNameT nameOf(std::size_t length) {
    SaHpiNameT name{};
    name.Length = static_cast<SaHpiUint16T>(length);
    std::memset(name.Value, 'A', sizeof name.Value);
    return name;
}

Printed display(const SaHpiConditionT &condition, const char *indent = "") {
    const auto copy = std::make_unique<SaHpiConditionT>(condition);
    return printedBy(
        [&](zuSaHpiHandleT out) { return zuSaHpiConditionDisplay(out, copy.get(), indent); });
}

TEST(Condition, EveryLineOfASensors) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_SENSOR);
    condition.Entity = boardPath();
    condition.DomainId = 0xFFFFFFFE;
    condition.ResourceId = 0;
    condition.SensorNum = 0xFFFFFFFF;
    condition.EventState = 0x1F;
    condition.Name.Length = 16;
    std::memcpy(condition.Name.Value, "ABCDEFGHIJKLMNOP", 16);
    condition.Data = textBuffer(SAHPI_TL_TYPE_TEXT, "hot");
    const Printed printed = display(condition, "  ");
    EXPECT_EQ(printed.text, expectedText("condition.txt"));
    EXPECT_EQ(printed.result, 6);
}

TEST(Condition, OnlyTheTypeIsAlwaysThere) {
    const Printed resource = display(conditionOf(SAHPI_STATUS_COND_TYPE_RESOURCE), "> ");
    EXPECT_EQ(resource.text, "> Type 1: Resource\n");
    EXPECT_EQ(resource.result, 11);
    EXPECT_EQ(display(conditionOf(SAHPI_STATUS_COND_TYPE_USER)).text, "Type 3: User\n");
    const Printed unknown = display(conditionOf(0xFFFFFFFF));
    EXPECT_EQ(unknown.text, "Type 4294967295\n");
    EXPECT_EQ(unknown.result, 1);
}

TEST(Condition, OnlyAnOemsHasAManufacturer) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_OEM);
    condition.Mid = SAHPI_MANUFACTURER_ID_KORVANTIS;
    const Printed printed = display(condition, "> ");
    EXPECT_EQ(printed.text, "> Type 2: Oem\n"
                            "> ManufacturerId 24377: Korvantis\n");
    EXPECT_EQ(printed.result, 12);
    condition.Mid = 0xFFFFFFFF;
    EXPECT_EQ(display(condition).text, "Type 2: Oem\nManufacturerId 4294967295\n");
}

TEST(Condition, DomainAndResourceEachHaveTheirLine) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_USER);
    condition.DomainId = 0;
    EXPECT_EQ(display(condition, "> ").text, "> Type 3: User\n> Domain Id: 0\n");
    condition.DomainId = SAHPI_UNSPECIFIED_DOMAIN_ID;
    condition.ResourceId = 0xFFFFFFFE;
    EXPECT_EQ(display(condition, "> ").text, "> Type 3: User\n> Resource Id: 4294967294\n");
}

TEST(Condition, AShortNameStaysOnItsLineAndRepeatsTheIndent) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_USER);
    condition.Name = nameOf(1);
    EXPECT_EQ(display(condition, "> ").text, "> Type 3: User\n"
                                             "> Name: > 41  |A|\n");
    condition.Name = nameOf(16);
    EXPECT_EQ(display(condition, "> ").text,
              "> Type 3: User\n"
              "> Name: > 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n");
}

TEST(Condition, ALongNameBeginsALine) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_USER);
    condition.Name = nameOf(17);
    EXPECT_EQ(display(condition, "> ").text,
              "> Type 3: User\n"
              "> Name:\n"
              "> 0000: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
              "> 0010: 41                                  |A               |\n"
              "\n");
    condition.Name = nameOf(256);
    EXPECT_EQ(display(condition, "> ").text,
              "> Type 3: User\n"
              "> Name:\n"
              "> 0000: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
              ">      0010 - 00ef   same as above          /                /\n"
              "> 00f0: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
              "\n");
}

TEST(Condition, NoNameAndANameBeyondItsArrayAreNotShown) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_USER);
    for (const std::size_t length : {0U, 257U, 0x8001U, 0xFFFFU}) {
        condition.Name = nameOf(length);
        EXPECT_EQ(display(condition).text, "Type 3: User\n");
    }
}

TEST(Condition, DataOfOtherTypesAreDumped) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_USER);
    condition.Data = textBuffer(SAHPI_TL_TYPE_BINARY, "AB");
    EXPECT_EQ(display(condition, "> ").text, "> Type 3: User\n"
                                             "> Data: (Binary)\n"
                                             "> 4142  |AB|\n");
}

TEST(Condition, DataAndIndentAreNoFormats) {
    SaHpiConditionT condition = conditionOf(SAHPI_STATUS_COND_TYPE_USER);
    condition.Data = textBuffer(SAHPI_TL_TYPE_TEXT, "%n%s");
    EXPECT_EQ(display(condition, "%d").text, "%dType 3: User\n"
                                             "%dData: (Text:English)\"%n%s\"\n");
}

} // namespace
