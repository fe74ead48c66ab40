// Code that ends the process, run so that the process goes on: exit() comes back here, and what was
// registered with atexit() meanwhile waits for runExitHandler. The link replaces both calls.
#pragma once

#include <csetjmp>

namespace fuzz {

struct ExitState {
    bool watched; // exit() and atexit() are ours
    std::jmp_buf wayBack;
    int status; // of the last exit()
    void (*handler)();
};

extern ExitState exitState;

// Whether the code returned; false when it called exit(). What the code holds then is lost, so it
// must own nothing.
template <typename Code>
[[nodiscard]] bool returns(const Code &code) {
    if (setjmp(exitState.wayBack) != 0) {
        exitState.watched = false;
        return false;
    }
    exitState.watched = true;
    code();
    exitState.watched = false;
    return true;
}

// Runs and forgets the handler that was registered, if any.
void runExitHandler();

} // namespace fuzz
