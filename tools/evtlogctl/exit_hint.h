// Advice for the case that the library ends the process: its own message says what failed, the hint
// says on what and what to do.
#pragma once

#include <string>

namespace zusahpi::evtlogctl {

// While it lives, an exit of the process prints the hint. One at a time.
class ExitHint {
  public:
    explicit ExitHint(std::string hint);
    ~ExitHint();
    ExitHint(const ExitHint &) = delete;
    ExitHint &operator=(const ExitHint &) = delete;
};

} // namespace zusahpi::evtlogctl
