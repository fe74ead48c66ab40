// The C library's time zone, asked once for each quarter of an hour: no zone changes in between.
#include "tools/evtlogctl/local_time.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include <fmt/format.h>

#include "zuSaHpi_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
constexpr std::int64_t minute = 60;
constexpr std::int64_t quarter = 15 * minute;
constexpr std::size_t fractionDigits = 9;
constexpr std::size_t milliseconds = 3; // digits

[[nodiscard]] std::int64_t askedOffset(std::int64_t moment) {
    const std::time_t seconds = moment;
    std::tm local{};
    return localtime_r(&seconds, &local) != nullptr ? local.tm_gmtoff : 0;
}

// Shifts an absolute time into local time and returns by how many seconds: by none where the
// offset is not one that RFC 3339 can write, or the result no absolute time.
[[nodiscard]] std::int64_t shiftToLocal(SaHpiTimeT &time) {
    const std::int64_t offset = utcOffsetAt(time / nanosecondsPerSecond);
    SaHpiTimeT shifted = 0;
    if (offset % minute != 0 ||
        __builtin_add_overflow(time, offset * nanosecondsPerSecond, &shifted) ||
        shifted <= SAHPI_TIME_MAX_RELATIVE) {
        return 0;
    }
    time = shifted;
    return offset;
}

// The text without what the precision leaves out of its fraction, which stands at its end.
[[nodiscard]] std::string_view shortened(std::string_view text, Precision precision) {
    const std::size_t point = text.find('.');
    if (precision == Precision::nanoseconds || point == std::string_view::npos) {
        return text;
    }
    const bool whole = text.find_first_not_of('0', point + 1) == std::string_view::npos;
    return text.substr(0, whole ? point : text.size() - (fractionDigits - milliseconds));
}

void appendOffset(std::string &text, std::int64_t offset) {
    if (offset == 0) {
        text += 'Z';
        return;
    }
    const std::int64_t minutes = std::abs(offset) / minute;
    fmt::format_to(std::back_inserter(text), "{}{:02}:{:02}", offset < 0 ? '-' : '+', minutes / 60,
                   minutes % 60);
}

} // namespace

std::int64_t utcOffsetAt(std::int64_t moment) {
    static std::int64_t block = -1;
    static std::int64_t offset = 0;
    if (moment / quarter != block) {
        block = moment / quarter;
        offset = askedOffset(moment);
    }
    return offset;
}

std::size_t timeWidth(Precision precision) {
    static const bool alwaysZ = [] {
        tzset();
        return timezone == 0 && daylight == 0;
    }();
    const std::string_view clock = "2026-11-21T09:06:12.";
    const std::size_t digits = precision == Precision::nanoseconds ? fractionDigits : milliseconds;
    return clock.size() + digits + std::string_view(alwaysZ ? "Z" : "+01:00").size();
}

void useUtc() {
    (void)setenv("TZ", "UTC0", 1);
    tzset();
}

void appendTime(std::string &text, SaHpiTimeT time, Precision precision) {
    std::array<char, ZUSAHPI_TIME_TEXT_SIZE> buffer{};
    if (time <= SAHPI_TIME_MAX_RELATIVE) {
        text += shortened(zuSaHpiTimeT2String(time, 0, buffer.data()), precision);
        return;
    }
    const std::int64_t offset = shiftToLocal(time);
    std::string_view whole = zuSaHpiTimeT2String(time, 0, buffer.data());
    whole.remove_suffix(1); // the Z
    text += shortened(whole, precision);
    appendOffset(text, offset);
}

std::string timeText(SaHpiTimeT time) {
    std::string text;
    appendTime(text, time, Precision::milliseconds);
    return text;
}

} // namespace zusahpi::evtlogctl
