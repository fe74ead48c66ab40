// Waits for a log file to be written or to be replaced by another file of its name.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace zusahpi::evtlogctl {

// Throws Failure when the system has no watches left. What happens after the watch was made is
// never missed as long as it is renewed after each wait; some waits end without a change.
class LogWatch {
  public:
    explicit LogWatch(const std::string &path);
    ~LogWatch();
    LogWatch(const LogWatch &) = delete;
    LogWatch &operator=(const LogWatch &) = delete;

    // Watches what has the names now. False when that does not tell of everything that may come, as
    // when file or folder is gone: then it is to be renewed after a while.
    [[nodiscard]] bool renew();

    // Returns after a change or after that long (for ever when it is negative). False: nobody reads
    // standard output any more.
    [[nodiscard]] bool wait(std::chrono::milliseconds longest);

  private:
    std::string path_;
    int descriptor_ = -1;
    std::vector<int> watches_;
};

} // namespace zusahpi::evtlogctl
