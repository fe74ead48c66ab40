// The replaced exit() and atexit(), and the way back from them.

#include "tests/fuzz/process_exit.h"

#include <utility>

#include "tests/fuzz/harness.h"

namespace fuzz {

ExitState exitState;

void runExitHandler() {
    if (auto *const handler = std::exchange(exitState.handler, nullptr)) {
        handler();
    }
}

} // namespace fuzz

// The sanitizers' own start calls atexit() before their instrumentation may run.
#if defined(__clang__)
#define BEFORE_SANITIZERS                                                                          \
    __attribute__((disable_sanitizer_instrumentation, no_sanitize("coverage")))
#else
#define BEFORE_SANITIZERS __attribute__((no_sanitize("address", "undefined")))
#endif

extern "C" {

[[noreturn]] void __real_exit(int status);
int __real_atexit(void (*handler)());
[[noreturn]] void __wrap_exit(int status);
int __wrap_atexit(void (*handler)());

void __wrap_exit(int status) {
    using fuzz::exitState;
    if (!exitState.watched) {
        __real_exit(status);
    }
    exitState.status = status;
    std::longjmp(exitState.wayBack, 1);
}

BEFORE_SANITIZERS int __wrap_atexit(void (*handler)()) {
    using fuzz::exitState;
    if (!exitState.watched) {
        return __real_atexit(handler);
    }
    const int result = exitState.handler == nullptr ? 0 : -1; // there is room for one
    exitState.handler = handler;
    return result;
}

} // extern "C"
