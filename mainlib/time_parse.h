// Reads a time from text.
#pragma once

#include <string_view>

#include "SaHpi.h"

namespace zusahpi::mainlib {

// The numbers are those of zuSaHpiTimeErrMsg. time_parse.cpp says when each is reported.
enum class TimeError : int {
    none = 0,
    illegalField = 1,
    illegalLastCharacter = 2,
    unexpectedDate = 3,
    illegalMonth = 4,
    illegalDay = 5,
    illegalYear = 6,
    unexpectedTime = 7,
    illegalHour = 8,
    illegalMinute = 9,
    illegalSecond = 10,
    illegalSubseconds = 11,
    unexpectedHalfDay = 12,
    unexpectedDst = 13,
    unexpectedStd = 14,
    unexpectedRelative = 15,
    illegalRelativeDays = 16,
    illegalRelativeHours = 17,
    illegalRelativeMinutes = 18,
    illegalRelativeSeconds = 19,
    illegalRelativeSubseconds = 20,
    relativeComponentRange = 21,
    relativeOutOfRange = 22,
    timeComponentRange = 23,
    dateComponentRange = 24,
    dateOutOfRange = 25,
};

struct TimeReading {
    TimeError error = TimeError::none;
    SaHpiTimeT time = SAHPI_TIME_UNSPECIFIED; // SAHPI_TIME_UNSPECIFIED with every error
    bool late = false; // with dateOutOfRange: behind the last date, not before the first
};

// `now` stands for the present: the date of a time alone, and the word "now".
[[nodiscard]] TimeReading readTime(std::string_view text, SaHpiTimeT now);

} // namespace zusahpi::mainlib
