// The open files of all processes, from /proc; and of those that hide theirs, what a lease tells:
// the system gives one for reading only while no process has the file open for writing.
#include "tools/evtlogctl/lock_users.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_line.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr const char *proc = "/proc";

using Folder = std::unique_ptr<DIR, int (*)(DIR *)>;

[[nodiscard]] Folder openFolder(const std::string &path) {
    return {opendir(path.c_str()), closedir};
}

[[nodiscard]] std::string processFolder(pid_t id) {
    return fmt::format("{}/{}", proc, id);
}

[[nodiscard]] std::string contentsOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The arguments, or for a process without any its name.
[[nodiscard]] std::string commandOf(pid_t id) {
    std::string text = contentsOf(processFolder(id) + "/cmdline");
    if (text.empty()) {
        text = contentsOf(processFolder(id) + "/comm");
    }
    while (!text.empty() && (text.back() == '\0' || text.back() == '\n')) {
        text.pop_back();
    }
    std::replace(text.begin(), text.end(), '\0', ' ');
    return printable(reinterpret_cast<const unsigned char *>(text.data()), text.size());
}

enum class Answer { yes, no, hidden };

// The process, or its use of a file.
[[nodiscard]] bool hasEnded(int error) {
    return error == ENOENT || error == ESRCH;
}

[[nodiscard]] Answer hasOpen(pid_t id, const struct stat &file) {
    const std::string path = processFolder(id) + "/fd";
    const Folder folder = openFolder(path);
    if (folder == nullptr) {
        return hasEnded(errno) ? Answer::no : Answer::hidden;
    }
    Answer answer = Answer::no;
    // cppcheck-suppress readdirCalled ; readdir_r() is deprecated
    while (const dirent *const entry = readdir(folder.get())) {
        struct stat status {};
        if (fstatat(dirfd(folder.get()), entry->d_name, &status, 0) != 0) {
            // Who may list the open files may yet not look at them: root without CAP_SYS_PTRACE.
            answer = hasEnded(errno) ? answer : Answer::hidden;
        } else if (status.st_dev == file.st_dev && status.st_ino == file.st_ino) {
            return Answer::yes;
        }
    }
    return answer;
}

[[nodiscard]] std::optional<pid_t> processId(std::string_view name) {
    pid_t id = 0;
    const auto [end, error] = std::from_chars(name.begin(), name.end(), id);
    return error == std::errc{} && end == name.end() ? std::optional(id) : std::nullopt;
}

// Whether any of its user ids is that of the owner. The owner of its folder is not asked: the
// system gives the folder of a process that hides its files to root.
[[nodiscard]] bool belongsTo(pid_t id, uid_t owner) {
    std::istringstream status(contentsOf(processFolder(id) + "/status"));
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("Uid:")) {
            std::istringstream ids(line.substr(std::string_view("Uid:").size()));
            for (uid_t each = 0; ids >> each;) {
                if (each == owner) {
                    return true;
                }
            }
            return false;
        }
    }
    return true; // nothing is known of it
}

} // namespace

Users usersOf(const struct stat &file, uid_t owner) {
    const Folder folder = openFolder(proc);
    if (folder == nullptr) {
        fail(Status::systemRefused, "{} cannot be read: {}; without it nobody knows who uses a log",
             proc, systemError());
    }
    Users users;
    // cppcheck-suppress readdirCalled ; readdir_r() is deprecated
    while (const dirent *const entry = readdir(folder.get())) {
        const std::optional<pid_t> id = processId(entry->d_name);
        if (!id || *id == getpid()) {
            continue;
        }
        const Answer answer = hasOpen(*id, file);
        if (answer == Answer::yes) {
            users.first = Process{.id = *id, .command = commandOf(*id)};
            break;
        }
        if (answer == Answer::hidden && belongsTo(*id, owner)) {
            users.unknown = Process{.id = *id, .command = commandOf(*id)};
        }
    }
    return users;
}

bool surelyUnwritten(const std::string &path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return false;
    }
    // Someone who opens the file at this moment waits for the lease, and that comes as a signal.
    (void)std::signal(SIGIO, SIG_IGN);
    const bool unwritten = fcntl(descriptor, F_SETLEASE, F_RDLCK) == 0;
    close(descriptor); // ends the lease
    return unwritten;
}

std::optional<Process> processOf(pid_t id) {
    if (id <= 0 || access(processFolder(id).c_str(), F_OK) != 0) {
        return std::nullopt;
    }
    return Process{.id = id, .command = commandOf(id)};
}

} // namespace zusahpi::evtlogctl
