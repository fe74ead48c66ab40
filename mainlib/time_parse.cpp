// The time parser. A text is a row of fields with blanks between them, in any order, upper or lower
// case:
//
//   date        2026-11-21 or 11/21/2026; a time may follow in the same field after a T
//   time        8:06, 08:06:12, 08:06:12.5 (1 to 9 digits); without a date it is today's.
//               The field may end in Z, in an offset from UTC (+02:00), in AM or in PM
//   AM, PM      after a time of 1 to 12 hours
//   Z, UTC      after a time; the same as none: a time without an offset is UTC
//   STD, DST    after a time without Z or offset: in standard time, which changes nothing, or in
//               daylight saving time, which is an hour ahead
//   relative    +2d3h, -90s, 1h30m, 1.5s, +2d03:04:05.5, +30:00:00; may go on in fields without a
//               sign: 1d 2h. Units fall from days to seconds
//   now         the present; stands alone
//   unspecified SAHPI_TIME_UNSPECIFIED, which is no error; stands alone
//
// When each error is reported:
//
//    1  a field that begins like none of these, a word that stands in the wrong place, no field
//    2  a field that goes on after its end, or that ends before the unit of its number
//    3  a second date, a date beside a relative time or a word that stands alone
//    4  a month, 5  a day  that is missing or not of one or two digits
//    6  a year that is missing or not of four digits
//    7  a second time, a time beside a word that stands alone
//    8  an hour, 9  a minute, 10  a second  that is missing or not of one or two digits
//   11  a fraction that is missing or longer than nine digits
//   12  AM or PM without a time, after Z, an offset, STD or DST, or a second time
//   13  DST, 14  STD  without a time, after Z or an offset, or after one of the two
//   15  a relative time beside a date, a time or a word that stands alone; a sign in a later field
//   16  days, 17  hours, 18  minutes, 19  seconds  of a relative time that have no digits or more
//       than 18, that come twice, or that come after a smaller unit
//   20  a fraction in a relative time that is missing, longer than nine digits, or not of seconds
//   21  hours above 23, minutes or seconds above 59 after a larger unit
//   22  a relative time above SAHPI_TIME_MAX_RELATIVE or of more than 63 bits
//   23  an hour above 23, or outside 1 to 12 with AM and PM; a minute or second above 59, in an
//       offset too
//   24  a month outside 1 to 12, a day that its month does not have
//   25  a moment that is not above SAHPI_TIME_MAX_RELATIVE (May 1997), where a value would mean a
//       relative time, or does not fit into 64 bits (April 2262)
//
// Invariant: no number is computed before its digits are counted, no sum without an overflow check.
#include "mainlib/time_parse.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>

#include "mainlib/clock.h"
#include "mainlib/letter_case.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::mainlib {
namespace {

using std::chrono::sys_days;

enum class Unit : unsigned { days, hours, minutes, seconds };

struct UnitFacts {
    std::int64_t seconds; // that one of it has
    std::int64_t highest; // after a larger unit; nothing is larger than days
    TimeError illegal;
};

constexpr std::array<UnitFacts, 4> unitFacts = {{
    {86'400, 0, TimeError::illegalRelativeDays},
    {3'600, 23, TimeError::illegalRelativeHours},
    {60, 59, TimeError::illegalRelativeMinutes},
    {1, 59, TimeError::illegalRelativeSeconds},
}};

struct TimeOfDay {
    std::int64_t seconds = 0; // since midnight, as the fields say it
    std::int64_t nanoseconds = 0;
    std::optional<std::int64_t> offset; // seconds ahead of UTC: Z, an offset, STD or DST
    bool halfDay = false;               // AM or PM was given
};

struct Relative {
    bool negative = false;
    std::optional<Unit> smallest; // unit given so far
    std::int64_t magnitude = 0;
};

// What the fields read so far have given. `alone` excludes all others, `relative` the two before
// it.
struct Fields {
    std::optional<sys_days> date;
    std::optional<TimeOfDay> time;
    std::optional<Relative> relative;
    std::optional<std::int64_t> alone;
};

// ---- Characters -------------------------------------------------------------------------------

constexpr std::string_view blanks = " \t\n\v\f\r";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// The next character in lower case, NUL at the end; a NUL in the text counts as no other.
char peek(std::string_view field) {
    return field.empty() ? '\0' : lower(field.front());
}

bool accept(std::string_view &field, char character) {
    if (field.empty() || lower(field.front()) != character) {
        return false;
    }
    field.remove_prefix(1);
    return true;
}

struct Number {
    std::size_t digits = 0;
    std::int64_t value = 0; // valid up to 18 digits
};

constexpr std::size_t mostDigits = 18;

Number readNumber(std::string_view &field) {
    Number number;
    while (number.digits < field.size() && isDigit(field[number.digits])) {
        if (number.digits < mostDigits) {
            number.value = number.value * 10 + (field[number.digits] - '0');
        }
        ++number.digits;
    }
    field.remove_prefix(number.digits);
    return number;
}

TimeError readOneOrTwoDigits(std::string_view &field, TimeError illegal, std::int64_t &value) {
    const Number number = readNumber(field);
    value = number.value;
    return number.digits == 1 || number.digits == 2 ? TimeError::none : illegal;
}

TimeError readFraction(std::string_view &field, TimeError illegal, std::int64_t &nanoseconds) {
    Number number = readNumber(field);
    if (number.digits < 1 || number.digits > 9) {
        return illegal;
    }
    for (; number.digits < 9; ++number.digits) {
        number.value *= 10;
    }
    nanoseconds = number.value;
    return TimeError::none;
}

// The separator between two parts: where it is missing, the next part is missing at the end of the
// field, and the one before it is malformed elsewhere.
TimeError readSeparator(std::string_view &field, char separator, TimeError before,
                        TimeError after) {
    if (accept(field, separator)) {
        return TimeError::none;
    }
    return field.empty() ? after : before;
}

TimeError requireEnd(std::string_view field) {
    return field.empty() ? TimeError::none : TimeError::illegalLastCharacter;
}

// ---- Time of day ------------------------------------------------------------------------------

TimeError applyHalfDay(TimeOfDay &time, bool afternoon) {
    if (time.halfDay || time.offset) {
        return TimeError::unexpectedHalfDay;
    }
    constexpr std::int64_t hour = 3'600;
    constexpr std::int64_t noon = 12 * hour;
    if (time.seconds < hour || time.seconds >= noon + hour) {
        return TimeError::timeComponentRange;
    }
    time.seconds = time.seconds % noon + (afternoon ? noon : 0);
    time.halfDay = true;
    return TimeError::none;
}

TimeError applyHalfDay(Fields &fields, bool afternoon) {
    return fields.time ? applyHalfDay(*fields.time, afternoon) : TimeError::unexpectedHalfDay;
}

TimeError applyOffset(Fields &fields, std::int64_t offset, TimeError unexpected) {
    if (!fields.time || fields.time->offset) {
        return unexpected;
    }
    fields.time->offset = offset;
    return TimeError::none;
}

TimeError readOffset(std::string_view field, TimeOfDay &time) {
    const bool behind = accept(field, '-');
    if (!behind) {
        (void)accept(field, '+');
    }
    constexpr TimeError illegal = TimeError::illegalLastCharacter;
    std::int64_t hours = 0;
    std::int64_t minutes = 0;
    if (readOneOrTwoDigits(field, illegal, hours) != TimeError::none || !accept(field, ':') ||
        readOneOrTwoDigits(field, illegal, minutes) != TimeError::none || !field.empty()) {
        return illegal;
    }
    if (hours > 23 || minutes > 59) {
        return TimeError::timeComponentRange;
    }
    const std::int64_t offset = hours * 3'600 + minutes * 60;
    time.offset = behind ? -offset : offset;
    return TimeError::none;
}

// What may end the field of the time that has just been read.
TimeError readTimeSuffix(std::string_view field, TimeOfDay &time) {
    switch (peek(field)) {
    case '+':
    case '-':
        return readOffset(field, time);
    case 'z':
        field.remove_prefix(1);
        time.offset = 0;
        return requireEnd(field);
    case 'a':
    case 'p': {
        const bool afternoon = peek(field) == 'p';
        field.remove_prefix(1);
        if (!accept(field, 'm')) {
            return TimeError::illegalLastCharacter;
        }
        const TimeError error = applyHalfDay(time, afternoon);
        return error != TimeError::none ? error : requireEnd(field);
    }
    default:
        return requireEnd(field);
    }
}

TimeError readClock(std::string_view &field, TimeOfDay &time) {
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;
    TimeError error = readOneOrTwoDigits(field, TimeError::illegalHour, hour);
    if (error == TimeError::none) {
        error = readSeparator(field, ':', TimeError::illegalHour, TimeError::illegalMinute);
    }
    if (error == TimeError::none) {
        error = readOneOrTwoDigits(field, TimeError::illegalMinute, minute);
    }
    if (error == TimeError::none && accept(field, ':')) {
        error = readOneOrTwoDigits(field, TimeError::illegalSecond, second);
        if (error == TimeError::none && accept(field, '.')) {
            error = readFraction(field, TimeError::illegalSubseconds, time.nanoseconds);
        }
    }
    if (error != TimeError::none) {
        return error;
    }
    if (hour > 23 || minute > 59 || second > 59) {
        return TimeError::timeComponentRange;
    }
    time.seconds = hour * 3'600 + minute * 60 + second;
    return TimeError::none;
}

TimeError readTimeField(std::string_view field, Fields &fields) {
    if (fields.time || fields.alone) {
        return TimeError::unexpectedTime;
    }
    TimeOfDay time;
    const TimeError error = readClock(field, time);
    if (error != TimeError::none) {
        return error;
    }
    const TimeError suffixError = readTimeSuffix(field, time);
    fields.time = time;
    return suffixError;
}

// ---- Date -------------------------------------------------------------------------------------

struct Date {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
};

TimeError readYear(std::string_view &field, std::int64_t &year) {
    const Number number = readNumber(field);
    year = number.value;
    return number.digits == 4 ? TimeError::none : TimeError::illegalYear;
}

// yyyy-mm-dd; the caller has seen the digits and the first separator.
TimeError readIsoDate(std::string_view &field, Date &date) {
    TimeError error = readYear(field, date.year);
    if (error == TimeError::none) {
        (void)accept(field, '-');
        error = readOneOrTwoDigits(field, TimeError::illegalMonth, date.month);
    }
    if (error == TimeError::none) {
        error = readSeparator(field, '-', TimeError::illegalMonth, TimeError::illegalDay);
    }
    return error != TimeError::none ? error
                                    : readOneOrTwoDigits(field, TimeError::illegalDay, date.day);
}

// mm/dd/yyyy; likewise.
TimeError readUsDate(std::string_view &field, Date &date) {
    TimeError error = readOneOrTwoDigits(field, TimeError::illegalMonth, date.month);
    if (error == TimeError::none) {
        (void)accept(field, '/');
        error = readOneOrTwoDigits(field, TimeError::illegalDay, date.day);
    }
    if (error == TimeError::none) {
        error = readSeparator(field, '/', TimeError::illegalDay, TimeError::illegalYear);
    }
    return error != TimeError::none ? error : readYear(field, date.year);
}

TimeError readDateField(std::string_view field, Fields &fields, char separator) {
    if (fields.date || fields.relative || fields.alone) {
        return TimeError::unexpectedDate;
    }
    Date date;
    const TimeError error = separator == '-' ? readIsoDate(field, date) : readUsDate(field, date);
    if (error != TimeError::none) {
        return error;
    }
    const std::chrono::year_month_day day{std::chrono::year{static_cast<int>(date.year)},
                                          std::chrono::month{static_cast<unsigned>(date.month)},
                                          std::chrono::day{static_cast<unsigned>(date.day)}};
    if (!day.ok()) {
        return TimeError::dateComponentRange;
    }
    fields.date = sys_days{day};
    return accept(field, 't') ? readTimeField(field, fields) : requireEnd(field);
}

// ---- Relative time ----------------------------------------------------------------------------

TimeError add(Relative &relative, std::int64_t amount, std::int64_t nanosecondsEach) {
    std::int64_t nanoseconds = 0;
    if (__builtin_mul_overflow(amount, nanosecondsEach, &nanoseconds) ||
        __builtin_add_overflow(relative.magnitude, nanoseconds, &relative.magnitude)) {
        return TimeError::relativeOutOfRange;
    }
    return TimeError::none;
}

TimeError addUnit(Relative &relative, Unit unit, Number number) {
    const UnitFacts &facts = unitFacts[static_cast<unsigned>(unit)];
    const bool first = !relative.smallest;
    if (number.digits < 1 || number.digits > mostDigits || (!first && unit <= *relative.smallest)) {
        return facts.illegal;
    }
    if (!first && number.value > facts.highest) {
        return TimeError::relativeComponentRange;
    }
    relative.smallest = unit;
    return add(relative, number.value, facts.seconds * nanosecondsPerSecond);
}

TimeError addFraction(Relative &relative, std::string_view &field) {
    std::int64_t nanoseconds = 0;
    const TimeError error = readFraction(field, TimeError::illegalRelativeSubseconds, nanoseconds);
    return error != TimeError::none ? error : add(relative, nanoseconds, 1);
}

// The rest of hh:mm or hh:mm:ss.fraction, which ends the field.
TimeError readRelativeClock(std::string_view &field, Relative &relative, Number hours) {
    TimeError error = addUnit(relative, Unit::hours, hours);
    if (error == TimeError::none) {
        (void)accept(field, ':');
        error = addUnit(relative, Unit::minutes, readNumber(field));
    }
    if (error == TimeError::none && accept(field, ':')) {
        error = addUnit(relative, Unit::seconds, readNumber(field));
        if (error == TimeError::none && accept(field, '.')) {
            error = addFraction(relative, field);
        }
    }
    return error != TimeError::none ? error : requireEnd(field);
}

// The rest of 1.5s.
TimeError readFractionalSeconds(std::string_view &field, Relative &relative, Number seconds) {
    TimeError error = addUnit(relative, Unit::seconds, seconds);
    if (error == TimeError::none) {
        (void)accept(field, '.');
        error = addFraction(relative, field);
    }
    if (error != TimeError::none || accept(field, 's')) {
        return error;
    }
    const char unit = peek(field);
    return unit == 'd' || unit == 'h' || unit == 'm' ? TimeError::illegalRelativeSubseconds
                                                     : TimeError::illegalLastCharacter;
}

TimeError readRelativePart(std::string_view &field, Relative &relative) {
    const Number number = readNumber(field);
    switch (peek(field)) {
    case 'd':
        field.remove_prefix(1);
        return addUnit(relative, Unit::days, number);
    case 'h':
        field.remove_prefix(1);
        return addUnit(relative, Unit::hours, number);
    case 'm':
        field.remove_prefix(1);
        return addUnit(relative, Unit::minutes, number);
    case 's':
        field.remove_prefix(1);
        return addUnit(relative, Unit::seconds, number);
    case '.':
        return readFractionalSeconds(field, relative, number);
    case ':':
        return readRelativeClock(field, relative, number);
    default:
        return number.digits == 0 && !field.empty() ? TimeError::illegalField
                                                    : TimeError::illegalLastCharacter;
    }
}

TimeError readRelativeField(std::string_view field, Fields &fields) {
    const bool sign = peek(field) == '+' || peek(field) == '-';
    if (fields.date || fields.time || fields.alone || (fields.relative && sign)) {
        return TimeError::unexpectedRelative;
    }
    if (!fields.relative) {
        fields.relative.emplace().negative = peek(field) == '-';
    }
    if (sign) {
        field.remove_prefix(1);
    }
    TimeError error = TimeError::none;
    do {
        error = readRelativePart(field, *fields.relative);
    } while (error == TimeError::none && !field.empty());
    return error;
}

// ---- Fields -----------------------------------------------------------------------------------

TimeError readWord(std::string_view field, Fields &fields, std::int64_t now) {
    if (sameWord(field, "am") || sameWord(field, "pm")) {
        return applyHalfDay(fields, lower(field.front()) == 'p');
    }
    if (sameWord(field, "dst")) {
        return applyOffset(fields, 3'600, TimeError::unexpectedDst);
    }
    if (sameWord(field, "std")) {
        return applyOffset(fields, 0, TimeError::unexpectedStd);
    }
    if (sameWord(field, "z") || sameWord(field, "utc")) {
        return applyOffset(fields, 0, TimeError::illegalField);
    }
    const bool nothingBefore = !fields.date && !fields.time && !fields.relative && !fields.alone;
    if (nothingBefore && sameWord(field, "now")) {
        fields.alone = now;
        return TimeError::none;
    }
    if (nothingBefore && sameWord(field, "unspecified")) {
        fields.alone = SAHPI_TIME_UNSPECIFIED;
        return TimeError::none;
    }
    return TimeError::illegalField;
}

TimeError readField(std::string_view field, Fields &fields, std::int64_t now) {
    if (field.front() == '+' || field.front() == '-') {
        return readRelativeField(field, fields);
    }
    if (!isDigit(field.front())) {
        return readWord(field, fields, now);
    }
    std::string_view rest = field;
    (void)readNumber(rest);
    switch (const char separator = peek(rest)) {
    case '-':
    case '/':
        return readDateField(field, fields, separator);
    case ':':
        // After days, hh:mm goes on with the relative time.
        return fields.relative ? readRelativeField(field, fields) : readTimeField(field, fields);
    case 'd':
    case 'h':
    case 'm':
    case 's':
    case '.':
        return readRelativeField(field, fields);
    default:
        return TimeError::illegalField;
    }
}

// ---- Result -----------------------------------------------------------------------------------

TimeReading relativeTime(const Relative &relative) {
    if (relative.negative) {
        return {.time = -relative.magnitude};
    }
    if (relative.magnitude > SAHPI_TIME_MAX_RELATIVE) {
        return {.error = TimeError::relativeOutOfRange};
    }
    return {.time = relative.magnitude};
}

TimeReading absoluteTime(const Fields &fields, SaHpiTimeT now) {
    const std::chrono::sys_time<std::chrono::nanoseconds> present{std::chrono::nanoseconds{now}};
    const sys_days day =
        fields.date ? *fields.date : std::chrono::floor<std::chrono::days>(present);
    const TimeOfDay time = fields.time.value_or(TimeOfDay{});
    // A year has at most four digits: no overflow before the multiplication.
    const SaHpiTimeT seconds = SaHpiTimeT{day.time_since_epoch().count()} * 86'400 + time.seconds -
                               time.offset.value_or(0);
    SaHpiTimeT result = 0;
    if (__builtin_mul_overflow(seconds, nanosecondsPerSecond, &result) ||
        __builtin_add_overflow(result, time.nanoseconds, &result) ||
        result <= SAHPI_TIME_MAX_RELATIVE) {
        return {.error = TimeError::dateOutOfRange,
                .late = seconds > SAHPI_TIME_MAX_RELATIVE / nanosecondsPerSecond};
    }
    return {.time = result};
}

} // namespace

TimeReading readTime(std::string_view text, SaHpiTimeT now) {
    Fields fields;
    bool any = false;
    for (;;) {
        const std::size_t begin = text.find_first_not_of(blanks);
        if (begin == std::string_view::npos) {
            break;
        }
        text.remove_prefix(begin);
        const std::string_view field = text.substr(0, text.find_first_of(blanks));
        text.remove_prefix(field.size());
        const TimeError error = readField(field, fields, now);
        if (error != TimeError::none) {
            return {.error = error};
        }
        any = true;
    }
    if (!any) {
        return {.error = TimeError::illegalField};
    }
    if (fields.alone) {
        return {.time = *fields.alone};
    }
    return fields.relative ? relativeTime(*fields.relative) : absoluteTime(fields, now);
}

} // namespace zusahpi::mainlib

SaHpiTimeT zuSaHpiString2TimeT(const char *text, int, int *errorIndex) {
    using namespace zusahpi::mainlib;
    const TimeReading reading =
        readTime(text == nullptr ? std::string_view{} : text, zuSaHpiGetTimeofDay());
    *errorIndex = static_cast<int>(reading.error);
    return reading.time;
}
