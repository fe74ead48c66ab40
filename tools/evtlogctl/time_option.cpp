// Words, spans and local times; what they come to is read by the default main library's parser.
#include "tools/evtlogctl/time_option.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <ctime>
#include <limits>
#include <string>

#include "mainlib/time_parse.h"
#include "tools/evtlogctl/local_time.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

// Of a time of day. What lies outside them stands for the nearest one.
constexpr SaHpiTimeT firstMoment = SAHPI_TIME_MAX_RELATIVE + 1;
constexpr SaHpiTimeT lastMoment = std::numeric_limits<std::int64_t>::max();

[[nodiscard]] std::optional<std::int64_t> nearestMoment(const mainlib::TimeReading &reading) {
    if (reading.error == mainlib::TimeError::dateOutOfRange) {
        return reading.late ? lastMoment : firstMoment;
    }
    return reading.error == mainlib::TimeError::none ? std::optional(reading.time) : std::nullopt;
}

// A relative time needs its sign: without one it could mean before now as well.
[[nodiscard]] std::optional<std::int64_t> readMoment(const std::string &text, SaHpiTimeT now) {
    const auto moment = nearestMoment(mainlib::readTime(text, now));
    const std::size_t begin = text.find_first_not_of(" \t");
    const bool bare = begin != std::string::npos && text[begin] >= '0' && text[begin] <= '9';
    return moment && bare && *moment < firstMoment ? std::nullopt : moment;
}

// Of a wall clock that was read as if it stood in UTC, the moment when the local one shows it.
[[nodiscard]] std::optional<std::int64_t> fromLocal(SaHpiTimeT wall) {
    const std::time_t seconds = wall / nanosecondsPerSecond;
    std::tm clock{};
    if (gmtime_r(&seconds, &clock) == nullptr) {
        return std::nullopt;
    }
    clock.tm_isdst = -1;
    const std::int64_t moment = std::mktime(&clock);
    SaHpiTimeT result = 0;
    if (__builtin_mul_overflow(moment, nanosecondsPerSecond, &result) ||
        __builtin_add_overflow(result, wall % nanosecondsPerSecond, &result)) {
        return lastMoment;
    }
    return std::max(result, firstMoment);
}

[[nodiscard]] std::optional<std::int64_t> midnight(SaHpiTimeT now, int daysLater) {
    const std::time_t seconds = now / nanosecondsPerSecond;
    std::tm clock{};
    if (localtime_r(&seconds, &clock) == nullptr) {
        return std::nullopt;
    }
    clock.tm_hour = clock.tm_min = clock.tm_sec = 0;
    clock.tm_mday += daysLater;
    clock.tm_isdst = -1;
    return SaHpiTimeT{std::mktime(&clock)} * nanosecondsPerSecond;
}

[[nodiscard]] std::optional<std::int64_t> before(SaHpiTimeT now, const std::string &span) {
    const mainlib::TimeReading length = mainlib::readTime("+" + span, now);
    if (length.error == mainlib::TimeError::relativeOutOfRange) {
        return firstMoment;
    }
    if (length.error != mainlib::TimeError::none) {
        return std::nullopt;
    }
    // A clock that was never set gives relative times itself.
    const SaHpiTimeT moment = now - length.time;
    return now < firstMoment ? moment : std::max(moment, firstMoment);
}

// "-1h" and "1h ago"; a colon makes it a time from the start of the controller.
[[nodiscard]] std::optional<std::string> spanBeforeNow(const std::string &text) {
    constexpr std::string_view ago = " ago";
    if (text.ends_with(ago)) {
        return text.substr(0, text.size() - ago.size());
    }
    if (text.starts_with('-') && text.find(':') == std::string::npos) {
        return text.substr(1);
    }
    return std::nullopt;
}

// A date or a time without a zone is local. It is known by taking a zone at its end.
[[nodiscard]] std::optional<std::int64_t> localMoment(const std::string &text, SaHpiTimeT now) {
    if (text.find_first_not_of(" \t") == std::string::npos) {
        return std::nullopt;
    }
    const SaHpiTimeT wallNow = now + utcOffsetAt(now / nanosecondsPerSecond) * nanosecondsPerSecond;
    for (const char *const rest : {" UTC", " 00:00 UTC"}) {
        const mainlib::TimeReading wall = mainlib::readTime(text + rest, wallNow);
        if (wall.error == mainlib::TimeError::none) {
            return fromLocal(wall.time);
        }
        if (wall.error == mainlib::TimeError::dateOutOfRange) {
            return nearestMoment(wall);
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::int64_t> parseMoment(std::string_view given, SaHpiTimeT now) {
    std::string text(given);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    if (text == "today") {
        return midnight(now, 0);
    }
    if (text == "yesterday") {
        return midnight(now, -1);
    }
    if (text == "tomorrow") {
        return midnight(now, 1);
    }
    if (const auto span = spanBeforeNow(text)) {
        return before(now, *span);
    }
    if (const auto local = localMoment(text, now)) {
        return local;
    }
    return readMoment(text, now);
}

std::optional<std::int64_t> parseEnd(std::string_view text, SaHpiTimeT now) {
    constexpr std::size_t milliseconds = 3;
    constexpr std::int64_t restOfAMillisecond = 999'999;
    auto moment = parseMoment(text, now);
    const std::size_t point = text.find('.');
    if (!moment || *moment < 0 || point == std::string_view::npos) {
        return moment;
    }
    const std::string_view behind = text.substr(point + 1);
    const std::size_t digits = std::min(behind.find_first_not_of("0123456789"), behind.size());
    std::int64_t end = *moment;
    if (digits == milliseconds && __builtin_add_overflow(end, restOfAMillisecond, &end)) {
        end = std::numeric_limits<std::int64_t>::max();
    }
    return end;
}

} // namespace zusahpi::evtlogctl
