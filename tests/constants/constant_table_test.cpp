// Goal: all 649 rows, in order, with the values and type keys of the data file, and the row that
// ends the table.

#include <cstddef>

#include <gtest/gtest.h>

#include "tests/constants/tables.h"
#include "zuSaHpi_util.h"

namespace {

TEST(ConstantTable, HoldsEveryRowInOrder) {
    const auto expected = expectedConstants();
    ASSERT_EQ(expected.size(), 649U);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const zuSaHpiConstantT &row = zuSaHpiConstants[i];
        ASSERT_STREQ(row.name, expected[i].name.c_str()) << i;
        EXPECT_EQ(row.value, expected[i].value) << row.name;
        EXPECT_EQ(row.type, expected[i].type) << row.name;
    }
}

TEST(ConstantTable, EndsWithARowWithoutName) {
    EXPECT_EQ(zuSaHpiConstants[649].name, nullptr);
    EXPECT_EQ(zuSaHpiConstants[649].value, 0);
    EXPECT_EQ(zuSaHpiConstants[649].type, 0U);
}

} // namespace
