// Goal: one line for each element up to the root or the end of the array, known and unknown types,
// and not a look behind the sixteenth element.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "zuSaHpi_util.h"

namespace {

SaHpiEntityT element(uint32_t type, uint32_t location) {
    return {.EntityType = static_cast<SaHpiEntityTypeT>(type), .EntityLocation = location};
}

Printed display(const SaHpiEntityPathT &path, const char *label = "Entity",
                const char *indent = "  ") {
    return printedBy(
        [&](zuSaHpiHandleT out) { return zuSaHpiEntityPathDisplay(out, &path, label, indent); });
}

TEST(EntityPath, ARootAtTheStartPrintsNothing) {
    SaHpiEntityPathT path{};
    path.Entry[0] = element(SAHPI_ENT_ROOT, 0);
    const Printed printed = display(path);
    EXPECT_EQ(printed.text, "");
    EXPECT_EQ(printed.calls, 0);
    EXPECT_EQ(printed.result, 0);
}

TEST(EntityPath, PrintsElementsInOrder) {
    SaHpiEntityPathT path{};
    path.Entry[0] = element(SAHPI_ENT_SYSTEM_BOARD, 3);
    path.Entry[1] = element(SAHPI_ENT_RACK, 0);
    path.Entry[2] = element(SAHPI_ENT_ROOT, 0);
    const Printed printed = display(path);
    EXPECT_EQ(printed.text, "  Entity = 7,3: System Board 3\n"
                            "           65536,0: Rack 0\n");
    EXPECT_EQ(printed.result, static_cast<int>(std::string(": Rack 0\n").size()));
}

TEST(EntityPath, UnknownTypesStandAlone) {
    SaHpiEntityPathT path{};
    path.Entry[0] = element(0xFFFFFFFE, 0xFFFFFFFF);
    path.Entry[1] = element(0x91, 5);
    path.Entry[2] = element(SAHPI_ENT_ROOT, 0);
    const Printed printed = display(path, "E", "");
    EXPECT_EQ(printed.text, "E = -2,4294967295\n"
                            "    145,5\n");
    EXPECT_EQ(printed.result, 1);
}

TEST(EntityPath, SixteenElementsWithoutRoot) {
    const auto path = std::make_unique<SaHpiEntityPathT>();
    std::string expected;
    for (uint32_t i = 0; i < 16; ++i) {
        path->Entry[i] = element(SAHPI_ENT_FAN, i);
        const std::string location = std::to_string(i);
        expected += (i == 0 ? "  Entity = " : "           ") + std::string("65548,") + location +
                    ": Fan " + location + "\n";
    }
    EXPECT_EQ(display(*path).text, expected);
}

TEST(EntityPath, TheContinuationIndentIsCutAtFortyNine) {
    SaHpiEntityPathT path{};
    path.Entry[0] = element(SAHPI_ENT_FAN, 1);
    path.Entry[1] = element(SAHPI_ENT_FAN, 2);
    path.Entry[2] = element(SAHPI_ENT_ROOT, 0);
    const std::string indent(60, '-');
    EXPECT_EQ(display(path, "Entity", indent.c_str()).text,
              indent + "Entity = 65548,1: Fan 1\n" + std::string(49, '-') + "65548,2: Fan 2\n");
}

TEST(EntityPath, LabelAndIndentAreNoFormats) {
    SaHpiEntityPathT path{};
    path.Entry[0] = element(SAHPI_ENT_BIOS, 1);
    path.Entry[1] = element(SAHPI_ENT_ROOT, 0);
    EXPECT_EQ(display(path, "%s", "%n").text, "%n%s = 34,1: Bios 1\n");
}

} // namespace
