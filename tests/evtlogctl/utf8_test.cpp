// Goal: UTF-8 stays as it is, and every byte that is none becomes one replacement character.
#include "tools/evtlogctl/utf8.h"

#include <gtest/gtest.h>

namespace {

using zusahpi::evtlogctl::validUtf8;

#define R "\xEF\xBF\xBD"

TEST(Utf8, CharactersOfEveryLengthStay) {
    for (const std::string text : {"", "plain", "\x7F", "\xC2\x80",
                                   "L\xC3\xBC"
                                   "fter",
                                   "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                                   "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(validUtf8(text), text);
    }
    EXPECT_EQ(validUtf8(std::string_view("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf8, EveryOtherByteIsReplaced) {
    EXPECT_EQ(validUtf8("\x80"), R);
    EXPECT_EQ(validUtf8("L\xFC"
                        "fter"),
              "L" R "fter");               // Latin-1
    EXPECT_EQ(validUtf8("\xC0\x80"), R R); // overlong
    EXPECT_EQ(validUtf8("\xC1\xBF"), R R);
    EXPECT_EQ(validUtf8("\xE0\x9F\xBF"), R R R);
    EXPECT_EQ(validUtf8("\xF0\x8F\xBF\xBF"), R R R R);
    EXPECT_EQ(validUtf8("\xED\xA0\x80"), R R R);       // a surrogate
    EXPECT_EQ(validUtf8("\xF4\x90\x80\x80"), R R R R); // beyond the last character
    EXPECT_EQ(validUtf8("\xF5\xFF"), R R);
    EXPECT_EQ(validUtf8("\xC3"), R); // cut off
    EXPECT_EQ(validUtf8("\xE2\x82"), R R);
    EXPECT_EQ(validUtf8("\xF0\x9F\x98"), R R R);
    EXPECT_EQ(validUtf8("\xC3("), R "(");
    EXPECT_EQ(validUtf8("\xE2\x82("), R R "(");
    EXPECT_EQ(validUtf8("\xE2(\x82"), R "(" R);
}

} // namespace
