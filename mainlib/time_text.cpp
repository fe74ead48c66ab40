// The text of a time, the same in every locale and time zone:
//
//   2026-11-21T08:06:12.123456789Z   above SAHPI_TIME_MAX_RELATIVE: ISO 8601, UTC
//   +3d04:05:06.000000007            0 to SAHPI_TIME_MAX_RELATIVE: days, then hours to nanoseconds
//   -0d00:00:00.000000001            below 0: the same, of the magnitude
//   unspecified                      SAHPI_TIME_UNSPECIFIED
//
// Fractions always have nine digits, so equal times have equal texts and absolute times sort as
// text. Every text is at most 30 characters long and reads back to the same time.
#include <chrono>
#include <cstring>

#include "zuSaHpi_mainlib.h"

namespace {

using namespace std::chrono;

// Writes so many digits, leading zeros included, and returns the place after them.
char *putDigits(char *out, long value, int width) {
    for (int i = width; i-- > 0; value /= 10) {
        out[i] = static_cast<char>('0' + value % 10);
    }
    return out + width;
}

char *putPart(char *out, long value, int width, char after) {
    out = putDigits(out, value, width);
    *out = after;
    return out + 1;
}

char *putClock(char *out, const hh_mm_ss<nanoseconds> &clock) {
    out = putPart(out, static_cast<long>(clock.hours().count()), 2, ':');
    out = putPart(out, static_cast<long>(clock.minutes().count()), 2, ':');
    out = putPart(out, static_cast<long>(clock.seconds().count()), 2, '.');
    return putDigits(out, static_cast<long>(clock.subseconds().count()), 9);
}

// `time` is above SAHPI_TIME_MAX_RELATIVE and fits into 64 bits: the year is 1997 to 2262.
void writeAbsolute(SaHpiTimeT time, char *out) {
    const sys_time<nanoseconds> moment{nanoseconds{time}};
    const sys_days day = floor<days>(moment);
    const year_month_day date{day};
    out = putPart(out, static_cast<int>(date.year()), 4, '-');
    out = putPart(out, static_cast<long>(static_cast<unsigned>(date.month())), 2, '-');
    out = putPart(out, static_cast<long>(static_cast<unsigned>(date.day())), 2, 'T');
    out = putClock(out, hh_mm_ss<nanoseconds>{moment - day});
    std::memcpy(out, "Z", sizeof "Z");
}

// `time` is not SAHPI_TIME_UNSPECIFIED, whose magnitude has no 64 bits; so days are at most 106751.
void writeRelative(SaHpiTimeT time, char *out) {
    const nanoseconds magnitude{time < 0 ? -time : time};
    const days day = floor<days>(magnitude);
    *out++ = time < 0 ? '-' : '+';
    int width = 1;
    for (auto rest = day.count(); rest >= 10; rest /= 10) {
        ++width;
    }
    out = putPart(out, static_cast<long>(day.count()), width, 'd');
    *putClock(out, hh_mm_ss<nanoseconds>{magnitude - day}) = '\0';
}

} // namespace

char *zuSaHpiTimeT2String(SaHpiTimeT time, int, char *buffer) {
    if (time == SAHPI_TIME_UNSPECIFIED) {
        std::memcpy(buffer, "unspecified", sizeof "unspecified");
    } else if (time > SAHPI_TIME_MAX_RELATIVE) {
        writeAbsolute(time, buffer);
    } else {
        writeRelative(time, buffer);
    }
    return buffer;
}
