// inotify watches on the file and on its folder: the folder tells of a new file of the same name.
#include "tools/evtlogctl/log_watch.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "tools/evtlogctl/failure.h"

namespace zusahpi::evtlogctl {
namespace {

[[noreturn]] void refuse(const std::string &path) {
    fail(Status::systemRefused, "{} cannot be watched: {}; list it without --follow", path,
         systemError());
}

[[nodiscard]] std::string folderOf(const std::string &path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

} // namespace

LogWatch::LogWatch(const std::string &path)
    : path_(path), descriptor_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    constexpr std::uint32_t comingAndGoing = IN_CREATE | IN_MOVED_TO;
    if (descriptor_ < 0) {
        refuse(path);
    }
    if (inotify_add_watch(descriptor_, folderOf(path).c_str(), comingAndGoing) < 0) {
        const int error = errno;
        close(descriptor_);
        errno = error;
        refuse(path);
    }
    watchFile();
}

LogWatch::~LogWatch() {
    close(descriptor_);
}

void LogWatch::watchFile() {
    // Without the file there is nothing to see until the folder tells of one.
    (void)inotify_add_watch(descriptor_, path_.c_str(), IN_MODIFY | IN_MOVE_SELF | IN_ATTRIB);
}

bool LogWatch::wait(std::chrono::milliseconds longest) {
    std::array<pollfd, 2> watched = {
        pollfd{.fd = descriptor_, .events = POLLIN, .revents = 0},
        pollfd{.fd = STDOUT_FILENO, .events = 0, .revents = 0}, // errors are always told
    };
    while (poll(watched.data(), watched.size(), static_cast<int>(longest.count())) < 0 &&
           errno == EINTR) {
    }
    alignas(inotify_event) std::array<std::byte, 4096> events;
    while (read(descriptor_, events.data(), events.size()) > 0) {
    }
    return (watched[1].revents & (POLLERR | POLLHUP)) == 0;
}

} // namespace zusahpi::evtlogctl
