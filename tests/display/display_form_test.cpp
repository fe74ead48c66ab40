// Goal: names become words, texts that are no names stay as they are, and a text that the main
// library keeps elsewhere is neither changed nor trusted to be short.

#include <string>

#include <gtest/gtest.h>

#include "display/display_form.h"
#include "zuSaHpi_mainlib.h"

namespace {

std::string ownTimeText; // of the main library; empty while it uses the buffer

} // namespace

extern "C" char *__real_zuSaHpiTimeT2String(SaHpiTimeT time, int flags, char *buffer);
extern "C" char *__wrap_zuSaHpiTimeT2String(SaHpiTimeT time, int flags, char *buffer);
extern "C" char *__wrap_zuSaHpiTimeT2String(SaHpiTimeT time, int flags, char *buffer) {
    if (ownTimeText.empty()) {
        return __real_zuSaHpiTimeT2String(time, flags, buffer);
    }
    return ownTimeText.data();
}

namespace {

using namespace zusahpi::display;

std::string wordsOf(std::string name) {
    makeWords(name.data());
    return name;
}

struct Form {
    bool matched;
    std::string text;
    bool operator==(const Form &) const = default;
};

Form formOf(std::int64_t value, std::uint32_t typeId, const char *prefix) {
    Name name;
    const bool matched = displayForm(value, typeId, prefix, name);
    return {matched, name.text};
}

TEST(DisplayForm, MakesWords) {
    EXPECT_EQ(wordsOf("UPPER_MAJOR"), "Upper Major");
    EXPECT_EQ(wordsOf("STATE_04"), "State 04");
    EXPECT_EQ(wordsOf("A"), "A");
    EXPECT_EQ(wordsOf("_AB_CD"), "_ab Cd"); // the first character is kept, whatever it is
    EXPECT_EQ(wordsOf(""), "");
    EXPECT_EQ(wordsOf("123"), "123");
}

TEST(DisplayForm, NamesLoseTheirPrefix) {
    EXPECT_EQ(formOf(0x10, 0x01000015, "SAHPI_ES_"), (Form{true, "Upper Major"}));
    EXPECT_EQ(formOf(7, 10, "SAHPI_ENT_"), (Form{true, "System Board"}));
    EXPECT_EQ(formOf(0x20, 0x0B000015, "SAHPI_ES_"),
              (Form{true, "Non Redundant Insufficient Resources"}));
    EXPECT_EQ(formOf(1, 31, "SAHPI_TEMPERATURE"), (Form{true, ""}));
}

TEST(DisplayForm, OtherTextsStay) {
    EXPECT_EQ(formOf(1, 31, "SAHPI_ES_"), (Form{false, "SAHPI_TEMPERATURE"}));
    EXPECT_EQ(formOf(1, 31, "SAHPI_TEMPERATURES"), (Form{false, "SAHPI_TEMPERATURE"}));
    EXPECT_EQ(formOf(250, 31, "SAHPI_"), (Form{false, "250"}));
    EXPECT_EQ(formOf(-1, 31, "SAHPI_"), (Form{false, "-1"}));
}

TEST(DisplayForm, TheMainLibrarysTimeTextIsUsedWhereverItLies) {
    EXPECT_EQ(formOf(5, 42, "SAHPI_TIME_"), (Form{false, "time(5,0)"}));
    ownTimeText = "half past two";
    EXPECT_EQ(formOf(5, 42, "SAHPI_TIME_"), (Form{false, "half past two"}));
    ownTimeText = "SAHPI_TIME_NOW_AND_THEN";
    EXPECT_EQ(formOf(5, 42, "SAHPI_TIME_"), (Form{true, "Now And Then"}));
    EXPECT_EQ(ownTimeText, "SAHPI_TIME_NOW_AND_THEN");
    ownTimeText = std::string(80, 'x');
    EXPECT_EQ(formOf(5, 42, "SAHPI_TIME_"), (Form{false, std::string(49, 'x')}));
    ownTimeText.clear();
}

} // namespace
