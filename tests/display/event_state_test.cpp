// Goal: event states are named by their category where it has names of its own, and by the general
// names elsewhere.

#include <gtest/gtest.h>

#include "display/event_state.h"
#include "tests/display/printed.h"
#include "zuSaHpi_util.h"

namespace {

Printed states(SaHpiEventStateT mask, SaHpiEventCategoryT category, int startColumn = 0,
               int wrapIndent = 0, const char *indent = "") {
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiEventStateDisplay(out, mask, category, startColumn, wrapIndent, indent);
    });
}

TEST(EventState, TheKeyHoldsTheCategoryThatHasNames) {
    using zusahpi::display::eventStateKey;
    EXPECT_EQ(eventStateKey(SAHPI_EC_UNSPECIFIED), 21U);
    EXPECT_EQ(eventStateKey(SAHPI_EC_THRESHOLD), 0x01000015U);
    EXPECT_EQ(eventStateKey(SAHPI_EC_REDUNDANCY), 0x0B000015U);
    EXPECT_EQ(eventStateKey(SAHPI_EC_SENSOR_SPECIFIC), 21U);
    EXPECT_EQ(eventStateKey(SAHPI_EC_GENERIC), 21U);
    EXPECT_EQ(eventStateKey(0xFF), 21U);
}

TEST(EventState, NamesByCategory) {
    EXPECT_EQ(states(0x3, SAHPI_EC_THRESHOLD).text, ": Lower Minor, Lower Major\n");
    EXPECT_EQ(states(0x3, SAHPI_EC_USAGE).text, ": Idle, Active\n");
    EXPECT_EQ(states(0x3, SAHPI_EC_PRESENCE).text, ": Absent, Present\n");
    EXPECT_EQ(states(0x100, SAHPI_EC_SEVERITY).text, ": Informational\n");
}

TEST(EventState, OtherCategoriesUseTheGeneralNames) {
    for (const int category : {0, 0x7E, 0x7F, 0xFF}) {
        EXPECT_EQ(states(0x4001, static_cast<SaHpiEventCategoryT>(category)).text,
                  ": State 00, State 14\n");
    }
    EXPECT_EQ(states(0x8001, SAHPI_EC_GENERIC).text, ": State 00, \n");
    EXPECT_EQ(states(0, SAHPI_EC_GENERIC).text, "\n");
}

TEST(EventState, PassesColumnWrapAndIndentOn) {
    const Printed printed = states(1, SAHPI_EC_THRESHOLD, 70, 2, "-");
    EXPECT_EQ(printed.text, ": \n-  Lower Minor\n");
    EXPECT_EQ(printed.result, 1);
}

} // namespace
