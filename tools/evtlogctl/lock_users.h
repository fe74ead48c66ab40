// Who uses a log file: the processes of this machine that have it open.
#pragma once

#include <optional>
#include <string>

#include <sys/stat.h>
#include <sys/types.h>

namespace zusahpi::evtlogctl {

struct Process {
    pid_t id = 0;
    std::string command; // as it was started, in printable ASCII
};

struct Users {
    std::optional<Process> first;   // one that has the file open
    std::optional<Process> unknown; // one of `owner` whose open files cannot be seen
};

// Looks through /proc for processes other than this one. `owner` is the user whose processes must
// all be looked into. Throws Failure without a /proc.
[[nodiscard]] Users usersOf(const struct stat &file, uid_t owner);

// Whether processes of this machine have the file open for writing, whoever they belong to and
// wherever they hide, as the system itself counts them. It tells only the owner of the file and
// root, and not on every file system.
enum class Writers { none, some, unknown };
[[nodiscard]] Writers writersOf(const std::string &path);

// The process of that id, empty when it has ended.
[[nodiscard]] std::optional<Process> processOf(pid_t id);

} // namespace zusahpi::evtlogctl
