// The open files of all processes, from /proc; and of those that are hidden, what a lease tells:
// the system gives one for reading only while no process has the file open for writing.
//
// Processes and threads end while they are looked at. What has ended uses nothing.
#include "tools/evtlogctl/lock_users.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <memory>
#include <sstream>
#include <string_view>
#include <vector>

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

enum class Answer { yes, no, hidden };

// A process or a thread.
[[nodiscard]] bool hasEnded(int error) {
    return error == ENOENT || error == ESRCH;
}

struct Contents {
    std::string text;
    int error = 0; // an errno
};

[[nodiscard]] Contents contentsOf(const std::string &path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return {.text = {}, .error = errno};
    }
    Contents contents;
    std::array<char, 4096> part{};
    ssize_t count = 0;
    while ((count = read(descriptor, part.data(), part.size())) > 0) {
        contents.text.append(part.data(), static_cast<std::size_t>(count));
    }
    contents.error = count < 0 ? errno : 0;
    close(descriptor);
    return contents;
}

// The arguments, or for a process without any its name.
[[nodiscard]] std::string commandOf(const std::string &thread) {
    std::string text = contentsOf(thread + "/cmdline").text;
    if (text.empty()) {
        text = contentsOf(thread + "/comm").text;
    }
    while (!text.empty() && (text.back() == '\0' || text.back() == '\n')) {
        text.pop_back();
    }
    std::replace(text.begin(), text.end(), '\0', ' ');
    return printable(reinterpret_cast<const unsigned char *>(text.data()), text.size());
}

[[nodiscard]] std::optional<pid_t> idFrom(std::string_view name) {
    pid_t id = 0;
    const auto [end, error] = std::from_chars(name.begin(), name.end(), id);
    return error == std::errc{} && end == name.end() ? std::optional(id) : std::nullopt;
}

// The folders of its threads: the first may have ended before the others, and shows nothing then,
// and each may have open files of its own. Of a process that hides them, its own folder.
[[nodiscard]] std::vector<std::string> threadsOf(pid_t process) {
    const std::string path = processFolder(process) + "/task";
    const Folder folder = openFolder(path);
    if (folder == nullptr) {
        return hasEnded(errno) ? std::vector<std::string>{} : std::vector{processFolder(process)};
    }
    std::vector<std::string> threads;
    // cppcheck-suppress readdirCalled ; readdir_r() is deprecated
    while (const dirent *const entry = readdir(folder.get())) {
        if (idFrom(entry->d_name)) {
            threads.push_back(path + "/" + entry->d_name);
        }
    }
    return threads;
}

[[nodiscard]] Answer hasOpen(const std::string &thread, const struct stat &file) {
    const Folder folder = openFolder(thread + "/fd");
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

// What follows the name of a field in the status of a thread.
[[nodiscard]] std::istringstream field(const std::string &status, std::string_view name) {
    std::istringstream lines(status);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name)) {
            return std::istringstream(line.substr(name.size()));
        }
    }
    return {};
}

// One that was killed closes its files before its parent has taken notice of it.
[[nodiscard]] bool livesBy(const Contents &status) {
    char state = 0;
    field(status.text, "State:") >> state;
    return !hasEnded(status.error) && state != 'Z' && state != 'X';
}

// Whether any of its user ids is that of the owner. The owner of its folder is not asked: the
// system gives the folder of a process that hides its files to root.
[[nodiscard]] bool belongsTo(const Contents &status, uid_t owner) {
    std::istringstream ids = field(status.text, "Uid:");
    bool told = false;
    for (uid_t each = 0; ids >> each; told = true) {
        if (each == owner) {
            return true;
        }
    }
    return !told;
}

struct Use {
    Answer answer = Answer::no;
    std::string command;
};

[[nodiscard]] Use useBy(pid_t process, const struct stat &file, uid_t owner) {
    Use use;
    for (const std::string &thread : threadsOf(process)) {
        const Answer answer = hasOpen(thread, file);
        if (answer == Answer::yes) {
            return {.answer = answer, .command = commandOf(thread)};
        }
        if (answer == Answer::hidden) {
            const Contents status = contentsOf(thread + "/status");
            if (livesBy(status) && belongsTo(status, owner)) {
                use = {.answer = answer, .command = commandOf(thread)};
            }
        }
    }
    return use;
}

} // namespace

Users usersOf(const struct stat &file, uid_t owner) {
    const Folder folder = openFolder(proc);
    // Where it is not mounted there may be an empty folder.
    if (folder == nullptr || access(fmt::format("{}/self/fd", proc).c_str(), R_OK) != 0) {
        fail(Status::systemRefused, "{} cannot be read: {}; without it nobody knows who uses a log",
             proc, systemError());
    }
    Users users;
    // cppcheck-suppress readdirCalled ; readdir_r() is deprecated
    while (const dirent *const entry = readdir(folder.get())) {
        const std::optional<pid_t> id = idFrom(entry->d_name);
        if (!id || *id == getpid()) {
            continue;
        }
        const Use use = useBy(*id, file, owner);
        if (use.answer == Answer::yes) {
            users.first = Process{.id = *id, .command = use.command};
            break;
        }
        if (use.answer == Answer::hidden) {
            users.unknown = Process{.id = *id, .command = use.command};
        }
    }
    return users;
}

Writers writersOf(const std::string &path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return Writers::unknown;
    }
    // Someone who opens the file at this moment waits for the lease, and that comes as a signal.
    (void)std::signal(SIGIO, SIG_IGN);
    Writers writers = Writers::none;
    if (fcntl(descriptor, F_SETLEASE, F_RDLCK) != 0) {
        writers = errno == EAGAIN ? Writers::some : Writers::unknown;
    }
    close(descriptor); // ends the lease
    return writers;
}

std::optional<Process> processOf(pid_t id) {
    for (const std::string &thread : threadsOf(id)) {
        if (livesBy(contentsOf(thread + "/status"))) {
            return Process{.id = id, .command = commandOf(thread)};
        }
    }
    return std::nullopt;
}

} // namespace zusahpi::evtlogctl
