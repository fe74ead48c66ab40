// Goal: a number, and the name of "no entry".

#include "frontends/entry_number.h"

#include <gtest/gtest.h>

#include "tests/display/printed.h"

namespace {

using zusahpi::frontends::printEntryNumber;

Printed printed(std::uint32_t number) {
    return printedBy([&](auto out) { return printEntryNumber(out, "a %s ", number); });
}

TEST(EntryNumber, NumbersAndNoEntry) {
    EXPECT_EQ(printed(0).text, "a %s 0\n");
    EXPECT_EQ(printed(7).text, "a %s 7\n");
    EXPECT_EQ(printed(0xFFFFFFFE).text, "a %s 4294967294\n");
    EXPECT_EQ(printed(0xFFFFFFFF).text, "a %s SAHPI_LAST_ENTRY\n");
    EXPECT_EQ(printed(7).result, 7);
    EXPECT_EQ(printed(0xFFFFFFFF).result, 22);
}

} // namespace
