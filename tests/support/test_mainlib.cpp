// The main library for tests: every name that the library imports.

#include "tests/support/test_mainlib.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include <unistd.h>

namespace test_mainlib {

State &state() {
    static State instance;
    return instance;
}

zuSaHpiHandleT handleOf(std::string &text) {
    return reinterpret_cast<zuSaHpiHandleT>(&text);
}

__attribute__((format(printf, 1, 0))) static std::string formatted(const char *format,
                                                                   va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::vector<char> text(static_cast<std::size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace test_mainlib

using test_mainlib::state;

int zuSaHpiPrintf(zuSaHpiHandleT handle, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = test_mainlib::formatted(format, arguments);
    va_end(arguments);
    ++state().printCalls;
    if (handle == reinterpret_cast<zuSaHpiHandleT>(stderr)) {
        state().diagnostics += text;
        state().diagnosticPrints.push_back(text);
        std::fputs(text.c_str(), stderr);
    } else {
        *reinterpret_cast<std::string *>(handle) += text;
    }
    return static_cast<int>(text.size());
}

void zuSaHpiSyslog(int priority, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    state().syslog.emplace_back(priority, test_mainlib::formatted(format, arguments));
    va_end(arguments);
}

SaHpiTimeT zuSaHpiGetTimeofDay(void) {
    return state().timeOfDay;
}

SaHpiTimeT zuSaHpiGetTimeRef(void) {
    return state().timeRef;
}

char *zuSaHpiTimeT2String(SaHpiTimeT time, int flags, char *buffer) {
    std::snprintf(buffer, ZUSAHPI_TIME_TEXT_SIZE, "time(%lld,%d)", static_cast<long long>(time),
                  flags);
    return buffer;
}

// Reads what zuSaHpiTimeT2String above writes, without the frame: a decimal number.
SaHpiTimeT zuSaHpiString2TimeT(const char *text, int, int *errorIndex) {
    long long time = 0;
    char rest = 0;
    if (std::sscanf(text, "%lld%c", &time, &rest) != 1) {
        *errorIndex = 1;
        return SAHPI_TIME_UNSPECIFIED;
    }
    *errorIndex = 0;
    return time;
}

int zuSaHpiLibInitialized = 1;
const char *zuSaHpiRoot = ".";
uid_t zuSaHpiEuId = geteuid();
gid_t zuSaHpiGroupId = getegid();
