// What output has on a terminal only: colours and a pager.
#pragma once

#include <optional>

#include <sys/types.h>

namespace zusahpi::evtlogctl {

// Standard output is a terminal that knows colours, and NO_COLOR does not forbid them.
[[nodiscard]] bool wantsColours();

// While it lives, standard output goes to a pager when it is a terminal: the command that PAGER
// holds, or less; none when PAGER is empty or "cat", or when there is no less. Ctrl-C is left to
// the pager. Its end waits for the user to leave the pager.
class Pager {
  public:
    // `atEnd`: the pager begins at the end of the text, where it is less.
    explicit Pager(bool atEnd);
    ~Pager();
    Pager(const Pager &) = delete;
    Pager &operator=(const Pager &) = delete;

  private:
    std::optional<pid_t> process_;
};

} // namespace zusahpi::evtlogctl
