// inotify watches on the file and on its folder: the folder tells of a new file of the same name.
// Where the log is a link, the folder of what it leads to is watched too.
#include "tools/evtlogctl/log_watch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/path.h"

namespace zusahpi::evtlogctl {
namespace {

[[noreturn]] void refuse(const std::string &path) {
    fail(Status::systemRefused, "{} cannot be watched: {}; list it without --follow", path,
         systemError());
}

constexpr std::uint32_t fileEvents = IN_MODIFY | IN_MOVE_SELF | IN_ATTRIB;
constexpr std::uint32_t folderEvents = IN_CREATE | IN_MOVED_TO | IN_MOVE_SELF | IN_DELETE_SELF;

} // namespace

LogWatch::LogWatch(const std::string &path)
    : path_(path), descriptor_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (descriptor_ < 0) {
        refuse(path);
    }
    if (!renew() && watches_.empty()) {
        const int error = errno;
        close(descriptor_);
        errno = error;
        refuse(path);
    }
}

LogWatch::~LogWatch() {
    close(descriptor_);
}

bool LogWatch::renew() {
    std::vector<int> watches;
    const auto watch = [&](const std::string &path, std::uint32_t events) {
        const int id = inotify_add_watch(descriptor_, path.c_str(), events);
        if (id >= 0) {
            watches.push_back(id);
        }
        return id >= 0;
    };
    // The folder alone does not tell of a file that a link is to lead to, nor that it goes itself
    // while a file that was in it is still open.
    bool whole = watch(folderOf(path_), folderEvents);
    whole = watch(path_, fileEvents) && whole;
    whole = watch(folderOf(withoutLinks(path_)), folderEvents) && whole;
    for (const int old : watches_) {
        if (std::find(watches.begin(), watches.end(), old) == watches.end()) {
            (void)inotify_rm_watch(descriptor_, old); // it may have gone by itself
        }
    }
    watches_ = std::move(watches);
    return whole;
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
