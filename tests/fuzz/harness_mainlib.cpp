// The rest of the main library for targets that run without the default one: clocks that stand
// still, times as plain numbers. Needs nothing of the C++ run time.

#include "tests/fuzz/harness.h"
#include "zuSaHpi_mainlib.h"

SaHpiTimeT zuSaHpiGetTimeofDay(void) {
    return 1'700'000'000'000'000'000;
}

SaHpiTimeT zuSaHpiGetTimeRef(void) {
    return 1'000'000'000;
}

char *zuSaHpiTimeT2String(SaHpiTimeT time, int, char *buffer) {
    fuzz::requireInitialised(&time, sizeof time);
    std::snprintf(buffer, ZUSAHPI_TIME_TEXT_SIZE, "%lld", static_cast<long long>(time));
    return buffer;
}

SaHpiTimeT zuSaHpiString2TimeT(const char *text, int, int *errorIndex) {
    char *rest = nullptr;
    const long long time = std::strtoll(text, &rest, 10);
    const bool isNumber = rest != text && *rest == '\0';
    *errorIndex = isNumber ? 0 : 1 + static_cast<int>(static_cast<unsigned char>(*text) % 25);
    return isNumber ? time : SAHPI_TIME_UNSPECIFIED;
}

int zuSaHpiLibInitialized = 1;
const char *zuSaHpiRoot = ".";
uid_t zuSaHpiEuId = static_cast<uid_t>(-1); // leaves owner and group of a file as they are
gid_t zuSaHpiGroupId = static_cast<gid_t>(-1);
