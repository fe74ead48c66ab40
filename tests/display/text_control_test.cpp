// Goal: lines and dumps as wide as the control, boxes around printable text only, and an end for
// every width and length.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "zuSaHpi_util.h"

namespace {

struct Control {
    SaHpiUint8T maxChars;
    uint32_t dataType = SAHPI_TL_TYPE_TEXT;
    int framed = 1;
    const char *indent = "> ";
};

// The text lies in memory of its own, with nothing behind it.
Printed display(std::string_view text, const Control &control) {
    const std::vector<SaHpiUint8T> data(text.begin(), text.end());
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiTextControlDisplay(out, data.data(), static_cast<uint32_t>(data.size()),
                                         control.maxChars,
                                         static_cast<SaHpiTextTypeT>(control.dataType),
                                         SAHPI_LANG_ENGLISH, control.framed, control.indent);
    });
}

TEST(TextControl, ABoxOfThreeCharacters) {
    EXPECT_EQ(display("abc", {.maxChars = 3}).text, "> +---+\n"
                                                    "> |abc|\n"
                                                    "> +---+\n");
}

TEST(TextControl, TheLastLineIsPadded) {
    const Printed printed = display("abcdefghijklmnopqrstuvwxy", {.maxChars = 10});
    EXPECT_EQ(printed.text, "> +----------+\n"
                            "> |abcdefghij|\n"
                            "> |klmnopqrst|\n"
                            "> |uvwxy     |\n"
                            "> +----------+\n");
    EXPECT_EQ(printed.result, 2);
}

TEST(TextControl, WithoutAFrameLinesArePaddedToo) {
    const Printed printed = display("abcdefghijklm", {.maxChars = 10, .framed = 0});
    EXPECT_EQ(printed.text, "> abcdefghij\n"
                            "> klm       \n");
    EXPECT_EQ(printed.result, 13);
}

TEST(TextControl, AnyFlagButZeroDrawsTheFrame) {
    EXPECT_EQ(display("a", {.maxChars = 1, .framed = -1}).text, "> +-+\n> |a|\n> +-+\n");
    EXPECT_EQ(display("a", {.maxChars = 1, .framed = 0x100}).text, "> +-+\n> |a|\n> +-+\n");
}

TEST(TextControl, NulBytesAreBlanks) {
    EXPECT_EQ(display(std::string_view("a\0b\0\0c", 6), {.maxChars = 4}).text, "> +----+\n"
                                                                               "> |a b |\n"
                                                                               "> | c  |\n"
                                                                               "> +----+\n");
}

TEST(TextControl, OtherBytesAndTheIndentAreNoFormats) {
    EXPECT_EQ(display("%n%s\n\xFF", {.maxChars = 6, .indent = "%d"}).text, "%d+------+\n"
                                                                           "%d|%n%s\n\xFF|\n"
                                                                           "%d+------+\n");
}

TEST(TextControl, NoTextIsAnEmptyBox) {
    EXPECT_EQ(display("", {.maxChars = 3}).text, "> +---+\n> +---+\n");
    const Printed unframed = display("", {.maxChars = 3, .framed = 0});
    EXPECT_EQ(unframed.text, "");
    EXPECT_EQ(unframed.calls, 0);
    EXPECT_EQ(unframed.result, 0);
}

TEST(TextControl, EveryTypeButUnicodeAndBinaryIsPrintable) {
    for (const uint32_t type : {1U, 2U, 3U, 5U, 0xFFFFFFFFU}) {
        EXPECT_EQ(display("ab", {.maxChars = 2, .dataType = type}).text,
                  "> +--+\n> |ab|\n> +--+\n");
    }
}

TEST(TextControl, TheWidestControl) {
    const std::string line(255, 'x');
    EXPECT_EQ(display(line + "y", {.maxChars = 255, .framed = 0}).text,
              "> " + line + "\n> y" + std::string(254, ' ') + "\n");
}

TEST(TextControl, UnicodeTakesTwoBytesACharacter) {
    const Printed printed = display("aAbBcCdDeEfF", {.maxChars = 4, .dataType = 0});
    EXPECT_EQ(printed.text, "> 61416242 63436444   |aAbBcCdD|\n"
                            "\n"
                            "> 65456646   |eEfF|\n"
                            "\n");
    EXPECT_EQ(printed.result, 1);
}

TEST(TextControl, BinaryTakesOneByteACharacter) {
    EXPECT_EQ(display("abcdef", {.maxChars = 4, .dataType = 4, .framed = 0}).text,
              "> 61626364   |abcd|\n"
              "\n"
              "> 6566  |ef|\n"
              "\n");
}

TEST(TextControl, ALongDumpIsFollowedByTwoEmptyLines) {
    EXPECT_EQ(display(std::string(17, 'A'), {.maxChars = 20, .dataType = 4}).text,
              "> 0000: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
              "> 0010: 41                                  |A               |\n"
              "\n"
              "\n");
}

TEST(TextControl, NoDataIsNoDump) {
    for (const uint32_t type : {0U, 4U}) {
        for (const SaHpiUint8T maxChars : {SaHpiUint8T{0}, SaHpiUint8T{3}}) {
            const Printed printed = display("", {.maxChars = maxChars, .dataType = type});
            EXPECT_EQ(printed.text, "");
            EXPECT_EQ(printed.calls, 0);
        }
    }
}

TEST(TextControlWithoutWidth, TextIsOneLine) {
    EXPECT_EQ(display("hello", {.maxChars = 0}).text, "> +-----+\n"
                                                      "> |hello|\n"
                                                      "> +-----+\n");
    EXPECT_EQ(display("hello", {.maxChars = 0, .framed = 0}).text, "> hello\n");
    EXPECT_EQ(display("", {.maxChars = 0}).text, "> ++\n> ++\n");
}

TEST(TextControlWithoutWidth, DataAreOneDump) {
    for (const uint32_t type : {0U, 4U}) {
        EXPECT_EQ(display("hello", {.maxChars = 0, .dataType = type}).text,
                  "> 68656c6c 6f  |hello|\n"
                  "\n");
    }
}

TEST(TextControlWithoutWidth, ALineHasAnyLength) {
    for (const std::size_t length : {255U, 256U, 510U, 511U, 5000U}) {
        std::string text;
        for (std::size_t i = 0; i < length; ++i) {
            text += static_cast<char>('a' + i % 26);
        }
        const std::string border = "> +" + std::string(length, '-') + "+\n";
        EXPECT_EQ(display(text, {.maxChars = 0}).text, border + "> |" + text + "|\n" + border);
    }
}

TEST(TextControl, LinesAreCutByTheirWidthForEveryWidthAndLength) {
    for (uint32_t width = 1; width <= 255; width += 7) {
        for (std::size_t length = 0; length <= 255; length += 5) {
            const std::string text(length, 'x');
            std::string expected;
            for (std::size_t at = 0; at < length; at += width) {
                std::string line(text, at, width);
                line.resize(width, ' ');
                expected += "> |" + line + "|\n";
            }
            const std::string border = "> +" + std::string(width, '-') + "+\n";
            EXPECT_EQ(display(text, {.maxChars = static_cast<SaHpiUint8T>(width)}).text,
                      border + expected + border);
        }
    }
}

} // namespace
