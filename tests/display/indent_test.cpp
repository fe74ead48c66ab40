// Goal: a composed indent is the outer indent and blanks, cut at 49 characters.

#include <string>

#include <gtest/gtest.h>

#include "display/indent.h"

namespace {

std::string composed(const std::string &outer, std::size_t blanks) {
    return zusahpi::display::composedIndent(outer.c_str(), blanks).text;
}

TEST(Indent, AddsBlanks) {
    EXPECT_EQ(composed("", 0), "");
    EXPECT_EQ(composed("> ", 0), "> ");
    EXPECT_EQ(composed("> ", 3), ">    ");
    EXPECT_EQ(composed("%s%n", 1), "%s%n ");
}

TEST(Indent, IsCutAtFortyNineCharacters) {
    EXPECT_EQ(composed(">", 48), ">" + std::string(48, ' '));
    EXPECT_EQ(composed(">", 49), ">" + std::string(48, ' '));
    EXPECT_EQ(composed(std::string(60, '-'), 5), std::string(49, '-'));
    EXPECT_EQ(composed("", 10'000), std::string(49, ' '));
}

} // namespace
