// The linker puts these functions between the front ends and the real ones.

#include "tests/frontends/stubs.h"

namespace stubs {

SaErrorT infoFailure = SA_OK;
TimeParser timeParser;

} // namespace stubs

using namespace stubs;

extern "C" {

SaErrorT __real_zuSaHpiEventLogInfoGet(SaHpiEventLogInfoT *info);
SaErrorT __wrap_zuSaHpiEventLogInfoGet(SaHpiEventLogInfoT *info);
SaErrorT __wrap_zuSaHpiEventLogInfoGet(SaHpiEventLogInfoT *info) {
    return infoFailure != SA_OK ? infoFailure : __real_zuSaHpiEventLogInfoGet(info);
}

SaHpiTimeT __real_zuSaHpiString2TimeT(const char *text, int flags, int *errorIndex);
SaHpiTimeT __wrap_zuSaHpiString2TimeT(const char *text, int flags, int *errorIndex);
SaHpiTimeT __wrap_zuSaHpiString2TimeT(const char *text, int flags, int *errorIndex) {
    timeParser.text = text;
    timeParser.flags = flags;
    if (!timeParser.result) {
        return __real_zuSaHpiString2TimeT(text, flags, errorIndex);
    }
    *errorIndex = timeParser.errorIndex;
    return *timeParser.result;
}

} // extern "C"
