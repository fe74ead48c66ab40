// An open log file that is only read, and what can be said of it before its entries are read.
#pragma once

#include <cstddef>
#include <string>

#include <sys/stat.h>
#include <sys/types.h>

#include "eventlog/log_format.h"

namespace zusahpi::evtlogctl {

// Every function throws Failure when the system refuses.
class LogFile {
  public:
    explicit LogFile(const std::string &path);
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    [[nodiscard]] const std::string &path() const {
        return path_;
    }

    // Reads `count` bytes; false when the file ends before.
    [[nodiscard]] bool read(off_t offset, void *to, std::size_t count) const;

    // Reads `count` bytes, or as many as the file has there. Returns how many.
    [[nodiscard]] std::size_t readUpTo(off_t offset, void *to, std::size_t count) const;

    [[nodiscard]] off_t size() const;

    // Also throws when it is no regular file.
    [[nodiscard]] struct stat status() const;

  private:
    std::string path_;
    int descriptor_ = -1;
};

[[nodiscard]] bool isKnown(eventlog::LogType type);

} // namespace zusahpi::evtlogctl
