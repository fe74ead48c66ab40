// The tool waits for a log that looks as if it were being written. Here time leaps at every look at
// the clock, so that the wait is over at once.

#include <chrono>

using Clock = std::chrono::steady_clock;

// Of the clock's own type: not every ABI returns a number as it returns that.
Clock::time_point leapingNow() asm("__wrap__ZNSt6chrono3_V212steady_clock3nowEv");

Clock::time_point leapingNow() {
    constexpr auto leap = std::chrono::milliseconds(1500);
    static Clock::time_point now;
    now += leap;
    return now;
}
