// The library's own clock: the host's time of day until a time is set, and from then on the main
// library's reference clock moved by an offset. An offset of 0 counts as set like any other.

#include "util/time_arithmetic.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

struct ClockState {
    SaHpiTimeT offset;
    bool offsetSet;
};

ClockState clockState;

} // namespace
} // namespace zusahpi

SaHpiTimeT zuSaHpiTime(void) {
    using namespace zusahpi;
    if (__atomic_load_n(&clockState.offsetSet, __ATOMIC_ACQUIRE)) {
        return timeSum(zuSaHpiGetTimeRef(), clockState.offset);
    }
    return zuSaHpiGetTimeofDay();
}

void zuSaHpiSetTime(SaHpiTimeT time) {
    using namespace zusahpi;
    clockState.offset = timeDifference(time, zuSaHpiGetTimeRef());
    // Only once the offset is whole may a signal handler see that there is one.
    __atomic_store_n(&clockState.offsetSet, true, __ATOMIC_RELEASE);
}
