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

[[nodiscard]] std::optional<std::int64_t> readMoment(const std::string &text, SaHpiTimeT now) {
    const mainlib::TimeReading reading = mainlib::readTime(text, now);
    return reading.error == mainlib::TimeError::none ? std::optional(reading.time) : std::nullopt;
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
        __builtin_add_overflow(result, wall % nanosecondsPerSecond, &result) ||
        result <= SAHPI_TIME_MAX_RELATIVE) {
        return std::nullopt;
    }
    return result;
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
    const auto length = readMoment("+" + span, now);
    if (!length || *length < 0 || *length > SAHPI_TIME_MAX_RELATIVE) {
        return std::nullopt;
    }
    return now - *length;
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
        if (const auto wall = readMoment(text + rest, wallNow)) {
            return fromLocal(*wall);
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
