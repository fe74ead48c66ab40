// Reads a time from text.
#pragma once

#include <string_view>

#include "zuSaHpi_util.h"

namespace zusahpi::mainlib {

// time_parse.cpp says when each is reported.
enum class TimeError : int {
    none = ZUSAHPI_TIME_OK,
    illegalField = ZUSAHPI_TIME_ILLEGAL_FIELD,
    illegalLastCharacter = ZUSAHPI_TIME_ILLEGAL_LAST_CHARACTER,
    unexpectedDate = ZUSAHPI_TIME_UNEXPECTED_DATE,
    illegalMonth = ZUSAHPI_TIME_ILLEGAL_MONTH,
    illegalDay = ZUSAHPI_TIME_ILLEGAL_DAY,
    illegalYear = ZUSAHPI_TIME_ILLEGAL_YEAR,
    unexpectedTime = ZUSAHPI_TIME_UNEXPECTED_TIME,
    illegalHour = ZUSAHPI_TIME_ILLEGAL_HOUR,
    illegalMinute = ZUSAHPI_TIME_ILLEGAL_MINUTE,
    illegalSecond = ZUSAHPI_TIME_ILLEGAL_SECOND,
    illegalSubseconds = ZUSAHPI_TIME_ILLEGAL_SUBSECONDS,
    unexpectedHalfDay = ZUSAHPI_TIME_UNEXPECTED_AM_PM,
    unexpectedDst = ZUSAHPI_TIME_UNEXPECTED_DST,
    unexpectedStd = ZUSAHPI_TIME_UNEXPECTED_STD,
    unexpectedRelative = ZUSAHPI_TIME_UNEXPECTED_RELATIVE,
    illegalRelativeDays = ZUSAHPI_TIME_ILLEGAL_RELATIVE_DAYS,
    illegalRelativeHours = ZUSAHPI_TIME_ILLEGAL_RELATIVE_HOURS,
    illegalRelativeMinutes = ZUSAHPI_TIME_ILLEGAL_RELATIVE_MINUTES,
    illegalRelativeSeconds = ZUSAHPI_TIME_ILLEGAL_RELATIVE_SECONDS,
    illegalRelativeSubseconds = ZUSAHPI_TIME_ILLEGAL_RELATIVE_SUBSECONDS,
    relativeComponentRange = ZUSAHPI_TIME_RELATIVE_COMPONENT_RANGE,
    relativeOutOfRange = ZUSAHPI_TIME_RELATIVE_OUT_OF_RANGE,
    timeComponentRange = ZUSAHPI_TIME_COMPONENT_RANGE,
    dateComponentRange = ZUSAHPI_TIME_DATE_COMPONENT_RANGE,
    dateOutOfRange = ZUSAHPI_TIME_DATE_OUT_OF_RANGE,
};

struct TimeReading {
    TimeError error = TimeError::none;
    SaHpiTimeT time = SAHPI_TIME_UNSPECIFIED; // SAHPI_TIME_UNSPECIFIED with every error
    bool late = false; // with dateOutOfRange: behind the last date, not before the first
};

// `now` stands for the present: the date of a time alone, and the word "now".
[[nodiscard]] TimeReading readTime(std::string_view text, SaHpiTimeT now);

} // namespace zusahpi::mainlib
