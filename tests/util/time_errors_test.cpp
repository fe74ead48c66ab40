// Goal: every error number of the main library's time parser has its message.

#include <array>

#include <gtest/gtest.h>

#include "zuSaHpi_util.h"

namespace {

constexpr std::array messages = {
    "",
    "Illegal field",
    "Illegal last character of field",
    "Unexpected date field",
    "Illegal month in date",
    "Illegal day in date",
    "Illegal year in date",
    "Unexpected time field",
    "Illegal hour in time",
    "Illegal minute in time",
    "Illegal second in time",
    "Illegal subseconds in time",
    "Unexpected AM/PM indicator",
    "Unexpected DST indicator",
    "Unexpected STD time indicator",
    "Unexpected relative time field",
    "Illegal days field",
    "Illegal hours field",
    "Illegal minutes field",
    "Illegal seconds field",
    "Illegal subseconds field",
    "Component range error in relative time",
    "Relative time out of range",
    "Component range error in time",
    "Component range error in date",
    "Date out of range",
};

TEST(TimeErrors, EveryNumberHasItsMessage) {
    static_assert(messages.size() == ZUSAHPI_TIME_ERRORS);
    for (std::size_t number = 0; number < messages.size(); ++number) {
        EXPECT_STREQ(zuSaHpiTimeErrMsg[number], messages[number]) << number;
    }
}

} // namespace
