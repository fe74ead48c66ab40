// The two clocks. Neither call can fail: both clock ids always exist on Linux.
#include "mainlib/clock.h"

#include "zuSaHpi_mainlib.h"

namespace {

SaHpiTimeT read(clockid_t clock) {
    std::timespec moment{};
    (void)clock_gettime(clock, &moment);
    return zusahpi::mainlib::nanosecondsOf(moment);
}

} // namespace

SaHpiTimeT zuSaHpiGetTimeofDay(void) {
    return read(CLOCK_REALTIME);
}

SaHpiTimeT zuSaHpiGetTimeRef(void) {
    return read(CLOCK_MONOTONIC);
}
