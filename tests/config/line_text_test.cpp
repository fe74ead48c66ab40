// Goal: pieces line up behind each other, and one that is cut leaves the buffer full.

#include <string>

#include <gtest/gtest.h>

#include "config/line_text.h"

namespace {

using zusahpi::config::append;
using zusahpi::config::emptyText;

TEST(LineText, PiecesFollowEachOther) {
    char buffer[20];
    auto text = emptyText(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "");
    append(text, "a%d ", 1);
    append(text, "%s", "%s");
    EXPECT_STREQ(buffer, "a1 %s");
    EXPECT_EQ(text.used, 5U);
}

TEST(LineText, ACutPieceLeavesTheBufferFull) {
    char buffer[6];
    auto text = emptyText(buffer, sizeof buffer);
    append(text, "abc");
    append(text, "def");
    EXPECT_STREQ(buffer, "abcde");
    EXPECT_EQ(text.used, 6U);
    append(text, "x");
    EXPECT_STREQ(buffer, "abcde");
    EXPECT_EQ(text.used, 6U);
}

TEST(LineText, TheNulNeedsRoomToo) {
    char buffer[4];
    auto text = emptyText(buffer, sizeof buffer);
    append(text, "abc");
    EXPECT_EQ(text.used, 3U);
    append(text, "d");
    EXPECT_EQ(text.used, 4U);
    EXPECT_STREQ(buffer, "abc");
}

TEST(LineText, NothingIsWrittenIntoNoBytes) {
    char untouched = '#';
    auto text = emptyText(&untouched, 0);
    append(text, "abc");
    EXPECT_EQ(untouched, '#');
    EXPECT_EQ(text.used, 0U);
}

} // namespace
