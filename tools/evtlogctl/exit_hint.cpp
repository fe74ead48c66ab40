// The hint of the moment, printed by an exit handler.
#include "tools/evtlogctl/exit_hint.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <unistd.h>

#include "tools/evtlogctl/failure.h"

namespace zusahpi::evtlogctl {
namespace {

// Never destroyed: the handler may run after the destructors of static objects.
std::function<Hint()> &current() {
    static auto *const hint = new std::function<Hint()>;
    return *hint;
}

// The library's own handler was registered later, so it has run: the lock is given up. Only
// _exit() can still change the status, and it leaves the streams alone.
void giveHint() {
    if (!current()) {
        return;
    }
    const Hint hint = current()();
    complain(hint.text);
    (void)std::fflush(nullptr);
    _exit(static_cast<int>(hint.status));
}

} // namespace

ExitHint::ExitHint(std::function<Hint()> hint) {
    static const int registered = std::atexit(giveHint);
    (void)registered; // without memory for a handler there is no hint
    current() = std::move(hint);
}

ExitHint::~ExitHint() {
    current() = nullptr;
}

} // namespace zusahpi::evtlogctl
