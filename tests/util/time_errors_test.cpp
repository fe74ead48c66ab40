// Goal: every error number of the main library's time parser has its name and its message.

#include <iterator>

#include <gtest/gtest.h>

#include "zuSaHpi_util.h"

namespace {

struct Row {
    int name;
    int number;
    const char *message;
};

constexpr Row rows[] = {
    {ZUSAHPI_TIME_OK, 0, ""},
    {ZUSAHPI_TIME_ILLEGAL_FIELD, 1, "Illegal field"},
    {ZUSAHPI_TIME_ILLEGAL_LAST_CHARACTER, 2, "Illegal last character of field"},
    {ZUSAHPI_TIME_UNEXPECTED_DATE, 3, "Unexpected date field"},
    {ZUSAHPI_TIME_ILLEGAL_MONTH, 4, "Illegal month in date"},
    {ZUSAHPI_TIME_ILLEGAL_DAY, 5, "Illegal day in date"},
    {ZUSAHPI_TIME_ILLEGAL_YEAR, 6, "Illegal year in date"},
    {ZUSAHPI_TIME_UNEXPECTED_TIME, 7, "Unexpected time field"},
    {ZUSAHPI_TIME_ILLEGAL_HOUR, 8, "Illegal hour in time"},
    {ZUSAHPI_TIME_ILLEGAL_MINUTE, 9, "Illegal minute in time"},
    {ZUSAHPI_TIME_ILLEGAL_SECOND, 10, "Illegal second in time"},
    {ZUSAHPI_TIME_ILLEGAL_SUBSECONDS, 11, "Illegal subseconds in time"},
    {ZUSAHPI_TIME_UNEXPECTED_AM_PM, 12, "Unexpected AM/PM indicator"},
    {ZUSAHPI_TIME_UNEXPECTED_DST, 13, "Unexpected DST indicator"},
    {ZUSAHPI_TIME_UNEXPECTED_STD, 14, "Unexpected STD time indicator"},
    {ZUSAHPI_TIME_UNEXPECTED_RELATIVE, 15, "Unexpected relative time field"},
    {ZUSAHPI_TIME_ILLEGAL_RELATIVE_DAYS, 16, "Illegal days field"},
    {ZUSAHPI_TIME_ILLEGAL_RELATIVE_HOURS, 17, "Illegal hours field"},
    {ZUSAHPI_TIME_ILLEGAL_RELATIVE_MINUTES, 18, "Illegal minutes field"},
    {ZUSAHPI_TIME_ILLEGAL_RELATIVE_SECONDS, 19, "Illegal seconds field"},
    {ZUSAHPI_TIME_ILLEGAL_RELATIVE_SUBSECONDS, 20, "Illegal subseconds field"},
    {ZUSAHPI_TIME_RELATIVE_COMPONENT_RANGE, 21, "Component range error in relative time"},
    {ZUSAHPI_TIME_RELATIVE_OUT_OF_RANGE, 22, "Relative time out of range"},
    {ZUSAHPI_TIME_COMPONENT_RANGE, 23, "Component range error in time"},
    {ZUSAHPI_TIME_DATE_COMPONENT_RANGE, 24, "Component range error in date"},
    {ZUSAHPI_TIME_DATE_OUT_OF_RANGE, 25, "Date out of range"},
};

TEST(TimeErrors, EveryNumberHasItsNameAndMessage) {
    static_assert(std::size(rows) == ZUSAHPI_TIME_ERRORS);
    int number = 0;
    for (const Row &row : rows) {
        EXPECT_EQ(row.number, number++);
        EXPECT_EQ(row.name, row.number);
        EXPECT_STREQ(zuSaHpiTimeErrMsg[row.number], row.message);
    }
}

} // namespace
