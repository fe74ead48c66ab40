// Goal: every format with printable and other data, with each kind of label, for full buffers and
// for any type, language and length.

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "display/text_buffer.h"
#include "tests/display/printed.h"
#include "zuSaHpi_util.h"

namespace {

SaHpiTextBufferT bufferOf(uint32_t type, std::string_view data, uint32_t language = 0x19) {
    SaHpiTextBufferT buffer{};
    buffer.DataType = static_cast<SaHpiTextTypeT>(type);
    buffer.Language = static_cast<SaHpiLanguageT>(language);
    buffer.DataLength = static_cast<SaHpiUint8T>(data.size());
    std::memset(buffer.Data, '!', sizeof buffer.Data);
    std::memcpy(buffer.Data, data.data(), data.size());
    return buffer;
}

Printed display(const SaHpiTextBufferT &buffer, const char *label, int format,
                const char *indent = "") {
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiTextBufferDisplay(out, &buffer, label, format, indent);
    });
}

TEST(TextBuffer, OnlyThreeTypesArePrintable) {
    using zusahpi::display::isPrintable;
    for (const uint32_t type : {1U, 2U, 3U}) {
        EXPECT_TRUE(isPrintable(bufferOf(type, ""))) << type;
    }
    for (const uint32_t type : {0U, 4U, 5U, 0xFFFFFFFFU}) {
        EXPECT_FALSE(isPrintable(bufferOf(type, ""))) << type;
    }
}

TEST(TextBuffer, TheTextEndsWithTheDataOrAtANul) {
    using zusahpi::display::textOf;
    EXPECT_STREQ(textOf(bufferOf(3, "abc")).text, "abc");
    EXPECT_STREQ(textOf(bufferOf(3, "")).text, "");
    EXPECT_STREQ(textOf(bufferOf(3, std::string_view("ab\0cd", 5))).text, "ab");
    EXPECT_EQ(std::string(textOf(bufferOf(3, std::string(255, 'x'))).text), std::string(255, 'x'));
}

TEST(TextBufferFormat0, QuotesText) {
    for (const uint32_t type : {1U, 2U, 3U}) {
        const Printed printed = display(bufferOf(type, "hello"), "Tag", 0, "  ");
        EXPECT_EQ(printed.text, "  Tag: \"hello\"\n");
        EXPECT_EQ(printed.result, 8);
    }
}

TEST(TextBufferFormat0, DumpsOtherDataWithThePlainIndent) {
    for (const uint32_t type : {0U, 4U, 9U}) {
        EXPECT_EQ(display(bufferOf(type, "hello"), "Tag", 0, "> ").text,
                  "> Tag: > 68656c6c 6f  |hello|\n");
    }
    EXPECT_EQ(display(bufferOf(4, ""), "Tag", 0, "> ").text, "> Tag: > <null>\n");
}

TEST(TextBufferFormat0, ThePlainIndentIsNeverCut) {
    const std::string indent(60, '-');
    EXPECT_EQ(display(bufferOf(4, "A"), "Tag", 0, indent.c_str()).text,
              indent + "Tag: " + indent + "41  |A|\n");
}

TEST(TextBufferFormat0, LabelsWithAndWithoutColon) {
    const SaHpiTextBufferT buffer = bufferOf(3, "x");
    EXPECT_EQ(display(buffer, nullptr, 0, "  ").text, "  \"x\"\n");
    EXPECT_EQ(display(buffer, "", 0, "  ").text, "  \"x\"\n");
    EXPECT_EQ(display(buffer, "Tag", 0, "  ").text, "  Tag: \"x\"\n");
    EXPECT_EQ(display(buffer, "Tag:", 0, "  ").text, "  Tag:\"x\"\n");
    EXPECT_EQ(display(buffer, "a:b", 0, "  ").text, "  a:b\"x\"\n");
}

TEST(TextBufferFormat1, PrintsTextBelowItsAttributes) {
    const Printed printed = display(bufferOf(3, "hello"), "Tag", 1, "  ");
    EXPECT_EQ(printed.text, "  Tag: \n"
                            "       DataType     3: Text\n"
                            "       Language     25: English\n"
                            "       DataLength   5\n"
                            "       Data = \"hello\"\n");
    EXPECT_EQ(printed.result, static_cast<int>(std::strlen("       Data = \"hello\"\n")));
}

TEST(TextBufferFormat1, DumpsOtherDataBelowItsAttributes) {
    const Printed printed = display(bufferOf(4, "hello", 200), "Tag", 1, "  ");
    EXPECT_EQ(printed.text, "  Tag: \n"
                            "       DataType     4: Binary\n"
                            "       Language     200\n"
                            "       DataLength   5\n"
                            "       Tag Data follows:\n"
                            "       68656c6c 6f  |hello|\n");
}

TEST(TextBufferFormat1, ALabelWithAColonIndentsByItsLength) {
    EXPECT_EQ(display(bufferOf(0, "hi", 0), "Tag:", 1, "").text, "Tag:\n"
                                                                 "    DataType     0: Unicode\n"
                                                                 "    Language     0: Undef\n"
                                                                 "    DataLength   2\n"
                                                                 "    Tag: Data follows:\n"
                                                                 "    6869  |hi|\n");
}

TEST(TextBufferFormat1, NoLabelIndentsLikeTheCaller) {
    for (const char *label : {static_cast<const char *>(nullptr), ""}) {
        EXPECT_EQ(display(bufferOf(7, "hi", 0x88), label, 1, "> ").text,
                  "> \n"
                  "> DataType     7\n"
                  "> Language     136: Zulu\n"
                  "> DataLength   2\n"
                  ">  Data follows:\n"
                  "> 6869  |hi|\n");
    }
}

TEST(TextBufferFormat1, TheContinuationIndentIsCutAtFortyNine) {
    const std::string indent(40, '-');
    const std::string lines = indent + std::string(9, ' ');
    EXPECT_EQ(display(bufferOf(3, "x"), "Long label", 1, indent.c_str()).text,
              indent + "Long label: \n" + lines + "DataType     3: Text\n" + lines +
                  "Language     25: English\n" + lines + "DataLength   1\n" + lines +
                  "Data = \"x\"\n");
}

TEST(TextBufferFormat2, IsTheBareText) {
    const Printed printed = display(bufferOf(3, "hello"), "Tag", 2, "  ");
    EXPECT_EQ(printed.text, "  Tag: hello");
    EXPECT_EQ(printed.result, 5);
    EXPECT_EQ(display(bufferOf(3, ""), nullptr, 2, "").text, "");
}

TEST(TextBufferFormat2, PrintsNothingOfOtherData) {
    for (const uint32_t type : {0U, 4U, 8U}) {
        const Printed printed = display(bufferOf(type, "hello"), "Tag", 2, "  ");
        EXPECT_EQ(printed.text, "  Tag: ");
        EXPECT_EQ(printed.result, 7);
        EXPECT_EQ(printed.calls, 1);
    }
}

TEST(TextBufferFormat3, TagsTextByItsType) {
    EXPECT_EQ(display(bufferOf(3, "hi"), "Tag", 3, " ").text, " Tag: (Text:English)\"hi\"\n");
    EXPECT_EQ(display(bufferOf(3, "hi", 0x45), "", 3, "").text, "(Text:Latvianlettish)\"hi\"\n");
    EXPECT_EQ(display(bufferOf(1, "hi"), "", 3, "").text, "(BCDPlus)\"hi\"\n");
    EXPECT_EQ(display(bufferOf(2, "hi"), "", 3, "").text, "(ASCII6)\"hi\"\n");
}

TEST(TextBufferFormat3, TagsOtherDataByItsType) {
    EXPECT_EQ(display(bufferOf(0, "hi"), "Tag", 3, "> ").text,
              "> Tag: (Unicode:English)\n> 6869  |hi|\n");
    EXPECT_EQ(display(bufferOf(4, "hi"), "", 3, "> ").text, "> (Binary)\n> 6869  |hi|\n");
    EXPECT_EQ(display(bufferOf(5, "hi"), "", 3, "").text, "(5,25)\n6869  |hi|\n");
    EXPECT_EQ(display(bufferOf(0xFFFFFFFF, "hi", 0x80000000), "", 3, "").text,
              "(-1,-2147483648)\n6869  |hi|\n");
}

TEST(TextBufferFormat3, AnUnknownLanguageIsANumber) {
    EXPECT_EQ(display(bufferOf(3, "hi", 0xFFFFFFFF), "", 3, "").text, "(Text:4294967295)\"hi\"\n");
}

TEST(TextBuffer, OtherFormatsAreReported) {
    for (const int format : {4, -1}) {
        const Printed printed = display(bufferOf(3, "hi"), "Tag", format, " ");
        const std::string message =
            "Undefined format code passed to zuSaHpiTextBufferDisplay: " + std::to_string(format) +
            "\n";
        EXPECT_EQ(printed.text, " Tag: " + message);
        EXPECT_EQ(printed.result, static_cast<int>(message.size()));
    }
}

TEST(TextBuffer, AFullBufferIsPrintedWhole) {
    const std::string text(255, 'x');
    const auto buffer = std::make_unique<SaHpiTextBufferT>(bufferOf(3, text));
    EXPECT_EQ(display(*buffer, nullptr, 0).text, '"' + text + "\"\n");
    EXPECT_EQ(display(*buffer, nullptr, 2).text, text);
    buffer->DataType = SAHPI_TL_TYPE_BINARY;
    EXPECT_NE(display(*buffer, nullptr, 0).text.find("00f0: 78787878 78787878 78787878 787878"),
              std::string::npos);
}

TEST(TextBuffer, LabelDataAndIndentAreNoFormats) {
    const SaHpiTextBufferT buffer = bufferOf(3, "%n%s");
    EXPECT_EQ(display(buffer, "%s", 0, "%d").text, "%d%s: \"%n%s\"\n");
    EXPECT_EQ(display(buffer, "%s", 2, "%d").text, "%d%s: %n%s");
    EXPECT_EQ(display(buffer, "%s", 3, "%d").text, "%d%s: (Text:English)\"%n%s\"\n");
    EXPECT_NE(display(buffer, "%s", 1, "%d").text.find("Data = \"%n%s\"\n"), std::string::npos);
}

} // namespace
