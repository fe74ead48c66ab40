// Goal: a cursor is taken back as it was printed, and nothing else is.
#include "tools/evtlogctl/cursor.h"

#include <limits>

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"
#include "tools/evtlogctl/entry_reader.h"

namespace {

using namespace zusahpi::evtlogctl;

void expectSame(const Cursor &cursor) {
    const auto again = parseCursor(cursorText(cursor));
    ASSERT_TRUE(again) << cursorText(cursor);
    EXPECT_EQ(again->number, cursor.number);
    EXPECT_EQ(again->logged, cursor.logged);
    EXPECT_EQ(again->fingerprint, cursor.fingerprint);
}

TEST(Cursor, IsTakenBack) {
    expectSame({.number = 1, .logged = 0, .fingerprint = 0});
    expectSame({.number = 0xFFFFFFFE,
                .logged = std::numeric_limits<std::int64_t>::max(),
                .fingerprint = std::numeric_limits<std::uint64_t>::max()});
    expectSame({.number = 7, .logged = SAHPI_TIME_UNSPECIFIED, .fingerprint = 1});
    EXPECT_EQ(cursorText({.number = 234, .logged = 0x1A, .fingerprint = 0xBEEF}), "ea.1a.beef");
}

TEST(Cursor, OfAnEntry) {
    const EventLogEntryRecord entry = sel_samples::entryOf(
        sel_samples::record("02 00 df 02 00 00 00 01 00 04 0c 08 6f 05 ff ff"), 7);
    const Cursor cursor = cursorOf(entry);
    EXPECT_EQ(cursor.number, 7U);
    EXPECT_EQ(cursor.logged, sel_samples::loggedAt);
    EXPECT_EQ(cursor.fingerprint, fingerprint(entry));
}

TEST(Cursor, WhatIsNone) {
    for (const char *const text :
         {"", ".", "..", "1.2", "1.2.", "1.2.3.", "1.2.3 ", " 1.2.3", "-1.2.3", "1.-2.3", "0x1.2.3",
          "100000000.2.3", "1.10000000000000000.3", "1.2.10000000000000000", "1.2.g"}) {
        EXPECT_FALSE(parseCursor(text)) << text;
    }
}

} // namespace
