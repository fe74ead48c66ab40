// Goal: all 59 types, in order, with their ids and as many constants as each has; the row that ends
// the table; the names that the library's own code uses for the ids.

#include <cstddef>

#include <gtest/gtest.h>

#include "constants/type_ids.h"
#include "tests/constants/tables.h"
#include "zuSaHpi_util.h"

namespace {

TEST(TypeTable, HoldsEveryRowInOrder) {
    const auto expected = expectedTypes();
    ASSERT_EQ(expected.size(), 59U);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_STREQ(zuSaHpiTypes[i].name, expected[i].name.c_str());
        EXPECT_EQ(zuSaHpiTypes[i].id, expected[i].id) << expected[i].name;
    }
    EXPECT_EQ(zuSaHpiTypes[59].name, nullptr);
    EXPECT_EQ(zuSaHpiTypes[59].id, 0U);
}

TEST(TypeTable, EveryTypeHasItsNumberOfConstants) {
    for (const ExpectedType &type : expectedTypes()) {
        std::uint32_t count = 0;
        for (const zuSaHpiConstantT *row = zuSaHpiConstants; row->name != nullptr; ++row) {
            count += (row->type & 0xFFFFFF) == type.id ? 1 : 0;
        }
        EXPECT_EQ(count, type.constants) << type.name;
    }
}

TEST(TypeTable, TheIdsInUseHaveTheirNumbers) {
    using namespace zusahpi;
    EXPECT_EQ(type_id::language, 3U);
    EXPECT_EQ(type_id::hsState, 7U);
    EXPECT_EQ(type_id::entityType, 10U);
    EXPECT_EQ(type_id::watchdogPretimerInterrupt, 18U);
    EXPECT_EQ(type_id::eventState, 21U);
    EXPECT_EQ(type_id::manufacturerId, 23U);
    EXPECT_EQ(type_id::watchdogTimerUse, 29U);
    EXPECT_EQ(type_id::sensorType, 31U);
    EXPECT_EQ(type_id::swEventType, 33U);
    EXPECT_EQ(type_id::timeout, 37U);
    EXPECT_EQ(type_id::textType, 41U);
    EXPECT_EQ(type_id::time, 42U);
    EXPECT_EQ(type_id::watchdogActionEvent, 51U);
    EXPECT_EQ(typeKey(SAHPI_EC_REDUNDANCY, type_id::eventState), 0x0B000015U);
}

} // namespace
