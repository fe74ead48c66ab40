// Goal: every control type's lines, signed and unsigned prints, short and long dumps, and no byte
// behind an array whatever its length field says.

#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "display/control_record.h"
#include "tests/display/printed.h"
#include "tests/display/records.h"

namespace {

using zusahpi::display::printControlRecord;

// Unused bytes of the union are not 0.
SaHpiCtrlRecT controlOf(uint32_t type) {
    SaHpiCtrlRecT record;
    std::memset(&record, 0xA5, sizeof record);
    record.OutputType = SAHPI_CTRL_LED;
    record.Type = static_cast<SaHpiCtrlTypeT>(type);
    record.DefaultMode = {SAHPI_CTRL_MODE_AUTO, SAHPI_FALSE};
    record.WriteOnly = SAHPI_FALSE;
    record.Oem = 1;
    return record;
}

Printed display(const SaHpiCtrlRecT &record, const char *indent) {
    const auto copy = std::make_unique<SaHpiCtrlRecT>(record);
    return printedBy([&](zuSaHpiHandleT out) { return printControlRecord(out, *copy, indent); });
}

// What stands between the lines that all controls have, for an indent of "> ".
std::string defaultsOf(const SaHpiCtrlRecT &record, const std::string &type) {
    const std::string text = display(record, "> ").text;
    const std::string before = "\n"
                               "> Control Output Type  1: Led\n"
                               "> Control Type         " +
                               type +
                               "\n"
                               "> Default Mode         0: Auto\n";
    const std::string after = "Oem Value: 1\n";
    EXPECT_EQ(text.substr(0, before.size()), before);
    EXPECT_GE(text.size(), before.size() + after.size());
    EXPECT_EQ(text.substr(text.size() - after.size()), after);
    return text.substr(before.size(), text.size() - before.size() - after.size());
}

TEST(ControlRecord, TheOemValueAloneHasNoIndent) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_DIGITAL);
    record.TypeUnion.Digital.Default = SAHPI_CTRL_STATE_PULSE_ON;
    record.Oem = 0xFFFFFFFF;
    const Printed printed = display(record, "> ");
    EXPECT_EQ(printed.text, "\n"
                            "> Control Output Type  1: Led\n"
                            "> Control Type         0: Digital\n"
                            "> Default Mode         0: Auto\n"
                            "> Default State        3: Pulse On\n"
                            "Oem Value: 4294967295\n");
    EXPECT_EQ(printed.result, 22);
}

TEST(ControlRecord, ModeAndFlags) {
    SaHpiCtrlRecT record = controlOf(9);
    record.OutputType = static_cast<SaHpiCtrlOutputTypeT>(0xFFFFFFFF);
    record.DefaultMode = {static_cast<SaHpiCtrlModeT>(7), 0x80};
    record.WriteOnly = 0x40;
    EXPECT_EQ(display(record, "> ").text, "\n"
                                          "> Control Output Type  4294967295\n"
                                          "> Control Type         9\n"
                                          "> Default Mode (READ ONLY)  7\n"
                                          "> Write-Only Control\n"
                                          "> Undefined Control Type\n"
                                          "Oem Value: 1\n");
}

TEST(ControlRecord, Digital) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_DIGITAL);
    record.TypeUnion.Digital.Default = static_cast<SaHpiCtrlStateDigitalT>(4);
    EXPECT_EQ(defaultsOf(record, "0: Digital"), "> Default State        4\n");
}

TEST(ControlRecord, Discrete) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_DISCRETE);
    record.TypeUnion.Discrete.Default = 0xFFFFFFFE;
    EXPECT_EQ(defaultsOf(record, "1: Discrete"), "> Default State       4294967294 (0xfffffffe)\n");
    record.TypeUnion.Discrete.Default = 10;
    EXPECT_EQ(defaultsOf(record, "1: Discrete"), "> Default State       10 (0x0000000a)\n");
}

TEST(ControlRecord, AnalogIsSigned) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_ANALOG);
    record.TypeUnion.Analog = {.Min = -2147483647 - 1, .Max = 2147483647, .Default = -1};
    EXPECT_EQ(defaultsOf(record, "2: Analog"), "> Default State       -1\n"
                                               "> Minimum Value       -2147483648\n"
                                               "> Maximum Value       2147483647\n");
}

TEST(ControlRecord, AStreamsDumpRepeatsTheIndent) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_STREAM);
    record.TypeUnion.Stream.Default = {
        .Repeat = 2, .StreamLength = 3, .Stream = {'A', 'B', 'C', 'D'}};
    EXPECT_EQ(defaultsOf(record, "3: Stream"), "> Default State -\n"
                                               ">    Repeat         YES\n"
                                               ">    Stream Length  3\n"
                                               ">    Stream         > 414243  |ABC|\n");
}

TEST(ControlRecord, AnEmptyStream) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_STREAM);
    record.TypeUnion.Stream.Default.Repeat = SAHPI_FALSE;
    record.TypeUnion.Stream.Default.StreamLength = 0;
    EXPECT_EQ(defaultsOf(record, "3: Stream"), "> Default State -\n"
                                               ">    Repeat         NO\n"
                                               ">    Stream Length  0\n"
                                               ">    Stream         > <null>\n");
}

TEST(ControlRecord, AStreamsDumpEndsWithItsArray) {
    for (const uint32_t length : {4U, 5U, 17U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_STREAM);
        record.TypeUnion.Stream.Default = {
            .Repeat = 0, .StreamLength = length, .Stream = {'A', 'B', 'C', 'D'}};
        EXPECT_EQ(defaultsOf(record, "3: Stream"), "> Default State -\n"
                                                   ">    Repeat         NO\n"
                                                   ">    Stream Length  " +
                                                       std::to_string(length) +
                                                       "\n"
                                                       ">    Stream         > 41424344   |ABCD|\n");
    }
}

SaHpiCtrlRecT textControl(SaHpiUint8T maxChars, const SaHpiTextBufferT &text) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_TEXT);
    record.TypeUnion.Text = {.MaxChars = maxChars,
                             .MaxLines = 255,
                             .Language = SAHPI_LANG_ENGLISH,
                             .DataType = SAHPI_TL_TYPE_TEXT,
                             .Default = {.Line = SAHPI_TLN_ALL_LINES, .Text = text}};
    return record;
}

TEST(ControlRecord, Text) {
    SaHpiCtrlRecT record = textControl(
        10, textBuffer(SAHPI_TL_TYPE_TEXT, "abcdefghijklmnopqrstuvwxy", SAHPI_LANG_GERMAN));
    record.OutputType = SAHPI_CTRL_LCD_DISPLAY;
    record.DefaultMode = {SAHPI_CTRL_MODE_MANUAL, SAHPI_TRUE};
    record.WriteOnly = SAHPI_TRUE;
    record.Oem = 0xFFFFFFFF;
    EXPECT_EQ(display(record, "  ").text, expectedText("control_text.txt"));
}

TEST(ControlRecord, TextOfUnknownTypesAndLanguages) {
    SaHpiCtrlRecT record =
        textControl(1, textBuffer(0xFFFFFFFF, "", static_cast<SaHpiLanguageT>(0x80000000)));
    record.TypeUnion.Text.MaxLines = 0;
    record.TypeUnion.Text.Language = static_cast<SaHpiLanguageT>(0x89);
    record.TypeUnion.Text.DataType = static_cast<SaHpiTextTypeT>(5);
    record.TypeUnion.Text.Default.Line = 255;
    EXPECT_EQ(defaultsOf(record, "4: Text"), "> Max Chars  1\n"
                                             "> Max Lines  0\n"
                                             "> Language    137\n"
                                             "> Data Type   5\n"
                                             "> Default -\n"
                                             ">    Line Number      255\n"
                                             ">    Buffer DataType  4294967295\n"
                                             ">    Buffer Language  2147483648\n"
                                             ">    Buffer Length    0\n"
                                             ">    +-+\n"
                                             ">    +-+\n");
}

std::string textOf(const SaHpiCtrlRecT &record) {
    const std::string text = defaultsOf(record, "4: Text");
    const std::string lastLine = "   Buffer Length    ";
    const std::size_t at = text.find(lastLine);
    EXPECT_NE(at, std::string::npos);
    return text.substr(text.find('\n', at) + 1);
}

TEST(ControlRecord, TheBuffersTypeDecidesNotTheControls) {
    EXPECT_EQ(textOf(textControl(2, textBuffer(SAHPI_TL_TYPE_UNICODE, "aAbBc"))),
              ">    61416242   |aAbB|\n"
              "\n"
              ">    63  |c|\n"
              "\n");
}

TEST(ControlRecord, TextOfAControlWithoutWidthIsOneLine) {
    const std::string text(255, 'x');
    const std::string border = ">    +" + std::string(255, '-') + "+\n";
    EXPECT_EQ(textOf(textControl(0, textBuffer(SAHPI_TL_TYPE_TEXT, text))),
              border + ">    |" + text + "|\n" + border);
    EXPECT_EQ(textOf(textControl(0, textBuffer(SAHPI_TL_TYPE_BINARY, "AB"))), ">    4142  |AB|\n"
                                                                              "\n");
}

SaHpiCtrlRecT oemControl(std::size_t bodyLength) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_OEM);
    SaHpiCtrlRecOemT &oem = record.TypeUnion.Oem;
    oem.MId = SAHPI_MANUFACTURER_ID_KORVANTIS;
    std::memcpy(oem.ConfigData, "ABCDEFGHIJ", sizeof oem.ConfigData);
    oem.Default.MId = 0xFFFFFFFF;
    oem.Default.BodyLength = static_cast<SaHpiUint8T>(bodyLength);
    std::memset(oem.Default.Body, 'A', bodyLength);
    return record;
}

// From the body's length on.
std::string bodyOf(const SaHpiCtrlRecT &record) {
    const std::string before = "> ManufacturerId 24377\n"
                               "> Config Data    > 41424344 45464748 494a  |ABCDEFGHIJ|\n"
                               "> Default -\n"
                               ">    ManufacturerId 4294967295\n";
    const std::string text = defaultsOf(record, "192: Oem");
    EXPECT_EQ(text.substr(0, before.size()), before);
    return text.substr(before.size());
}

TEST(ControlRecord, AnOemBodyOfSixteenBytesStaysOnItsLine) {
    EXPECT_EQ(bodyOf(oemControl(16)),
              ">    BodyLength     16\n"
              ">    Body           41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n");
    EXPECT_EQ(bodyOf(oemControl(1)), ">    BodyLength     1\n"
                                     ">    Body           41  |A|\n");
    EXPECT_EQ(bodyOf(oemControl(0)), ">    BodyLength     0\n"
                                     ">    Body           <null>\n");
}

TEST(ControlRecord, AnOemBodyOfSeventeenBytesBeginsALine) {
    SaHpiCtrlRecT record = oemControl(17);
    record.OutputType = SAHPI_CTRL_OEM;
    EXPECT_EQ(display(record, "> ").text, expectedText("control_oem.txt"));
}

TEST(ControlRecord, AFullOemBodyEndsWithItsArray) {
    const std::string body = bodyOf(oemControl(255));
    const std::string expected =
        ">    BodyLength     255\n"
        ">    Body -\n"
        ">    0000: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
        ">         0010 - 00df   same as above          /                /\n"
        ">    00e0: 41414141 41414141 41414141 41414141 |AAAAAAAAAAAAAAAA|\n"
        ">    00f0: 41414141 41414141 41414141 414141   |AAAAAAAAAAAAAAA |\n"
        "\n";
    EXPECT_EQ(body, expected);
}

TEST(ControlRecord, UnknownTypesAreUndefined) {
    for (const uint32_t type : {5U, 0xBFU, 0xC1U, 0xFFFFFFFFU}) {
        EXPECT_EQ(defaultsOf(controlOf(type), std::to_string(type)), "> Undefined Control Type\n");
    }
}

TEST(ControlRecord, TheIndentIsNoFormat) {
    SaHpiCtrlRecT record = controlOf(SAHPI_CTRL_TYPE_DISCRETE);
    record.TypeUnion.Discrete.Default = 1;
    EXPECT_EQ(display(record, "%s%n").text, "\n"
                                            "%s%nControl Output Type  1: Led\n"
                                            "%s%nControl Type         1: Discrete\n"
                                            "%s%nDefault Mode         0: Auto\n"
                                            "%s%nDefault State       1 (0x00000001)\n"
                                            "Oem Value: 1\n");
}

} // namespace
