// Numbers are hexadecimal, octal or decimal by their beginning, with every C library: what C's own
// base 0 has read since C89, and not what it reads since C23.

#include "util/number_base.h"

#include <array>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

namespace {

struct Number {
    const char *text;
    long long value;
    const char *rest;
};

TEST(NumberBase, FollowsFromTheBeginning) {
    constexpr std::array numbers{
        Number{"0x1f", 31, ""},       Number{"0X1F", 31, ""},   Number{"-0x10", -16, ""},
        Number{" \t+017", 15, ""},    Number{"08", 0, "8"},     Number{"0", 0, ""},
        Number{"10", 10, ""},         Number{"-7x", -7, "x"},   Number{"0x", 0, "x"},
        Number{"0xg", 0, "xg"},       Number{"0b11", 0, "b11"}, Number{"0B11", 0, "B11"},
        Number{"-0b11", 0, "b11"},    Number{"0o17", 0, "o17"}, Number{"b11", 0, "b11"},
        Number{"\n\v\f\r09", 0, "9"}, Number{"", 0, ""},
    };
    for (const Number &number : numbers) {
        char *rest = nullptr;
        EXPECT_EQ(std::strtoll(number.text, &rest, zusahpi::baseOf(number.text)), number.value)
            << number.text;
        EXPECT_STREQ(rest, number.rest) << number.text;
    }
}

} // namespace
