// Advice for the case that the library ends the process: its own message says what failed, the hint
// says on what and what to do, and gives the process the exit status for it.
#pragma once

#include <functional>
#include <string>

#include "tools/evtlogctl/status.h"

namespace zusahpi::evtlogctl {

struct Hint {
    std::string text;
    Status status;
};

// While it lives, an exit of the process prints the hint and takes its status. One at a time. The
// hint is made in the exit handler, when what the library left behind can be looked at.
class ExitHint {
  public:
    explicit ExitHint(std::function<Hint()> hint);
    ~ExitHint();
    ExitHint(const ExitHint &) = delete;
    ExitHint &operator=(const ExitHint &) = delete;
};

} // namespace zusahpi::evtlogctl
