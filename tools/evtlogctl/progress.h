// A progress bar on standard error, for work that takes a while.
#pragma once

#include <chrono>
#include <cstddef>

namespace zusahpi::evtlogctl {

// Shows nothing unless standard error is a terminal and there are many steps.
class Progress {
  public:
    explicit Progress(std::size_t steps);
    ~Progress(); // wipes the bar
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void show(std::size_t done);

  private:
    std::size_t steps_;
    bool visible_;
    std::chrono::steady_clock::time_point next_;
};

} // namespace zusahpi::evtlogctl
