// The hint of the moment, printed by an exit handler.
#include "tools/evtlogctl/exit_hint.h"

#include <cstdlib>
#include <utility>

#include "tools/evtlogctl/failure.h"

namespace zusahpi::evtlogctl {
namespace {

// Never destroyed: the handler may run after the destructors of static objects.
std::string &current() {
    static auto *const hint = new std::string;
    return *hint;
}

void printHint() {
    if (!current().empty()) {
        complain(current());
    }
}

} // namespace

ExitHint::ExitHint(std::string hint) {
    static const int registered = std::atexit(printHint);
    (void)registered; // without memory for a handler there is no hint
    current() = std::move(hint);
}

ExitHint::~ExitHint() {
    current().clear();
}

} // namespace zusahpi::evtlogctl
