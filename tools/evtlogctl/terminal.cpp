// The pager is a child whose standard input is a pipe from our standard output.
#include "tools/evtlogctl/terminal.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] std::string_view variable(const char *name) {
    const char *const value = std::getenv(name);
    return value != nullptr ? value : std::string_view{};
}

// Starts the command with `input` as its standard input; none where it cannot be started.
[[nodiscard]] std::optional<pid_t> spawn(const char *program, const char *const *words, int input) {
    posix_spawn_file_actions_t actions{};
    if (posix_spawn_file_actions_init(&actions) != 0) {
        return std::nullopt;
    }
    pid_t process = -1;
    const bool started = posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO) == 0 &&
                         posix_spawnp(&process, program, &actions, nullptr,
                                      const_cast<char *const *>(words), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    return started ? std::optional(process) : std::nullopt;
}

// What less is to do where nobody says else, also when PAGER names it: quit when all fits on the
// screen, pass colours on, leave long lines as they are. The end of the text comes first, because
// the user's own options may end in a text that has no end of its own.
void setLess(bool atEnd) {
    const char *const own = std::getenv("LESS");
    const std::string options = own != nullptr ? own : "FRSXMK";
    (void)setenv("LESS", ((atEnd ? "+G$" : "") + options).c_str(), 1);
}

[[nodiscard]] std::optional<pid_t> startPager(bool atEnd, int input) {
    setLess(atEnd);
    const std::string own(variable("PAGER"));
    if (!own.empty()) {
        const std::array<const char *, 4> words = {"sh", "-c", own.c_str(), nullptr};
        return spawn("sh", words.data(), input);
    }
    const std::array<const char *, 2> words = {"less", nullptr};
    return spawn("less", words.data(), input);
}

// A user who leaves the pager has seen enough; that is no failure.
void leaveQuietly(int) {
    _exit(0);
}

[[nodiscard]] bool wantsPager() {
    return isatty(STDOUT_FILENO) != 0 && variable("PAGER") != "cat" &&
           (std::getenv("PAGER") == nullptr || !variable("PAGER").empty());
}

} // namespace

bool wantsColours() {
    return isatty(STDOUT_FILENO) != 0 && variable("NO_COLOR").empty() &&
           !variable("TERM").empty() && variable("TERM") != "dumb";
}

Pager::Pager(bool atEnd) {
    std::array<int, 2> ends{};
    if (!wantsPager() || pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    process_ = startPager(atEnd, ends[0]);
    if (process_) {
        (void)std::fflush(stdout);
        (void)dup2(ends[1], STDOUT_FILENO);
        (void)std::signal(SIGINT, SIG_IGN);
        (void)std::signal(SIGPIPE, leaveQuietly);
    }
    close(ends[0]);
    close(ends[1]);
}

Pager::~Pager() {
    if (!process_) {
        return;
    }
    (void)std::fflush(stdout);
    close(STDOUT_FILENO);
    while (waitpid(*process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace zusahpi::evtlogctl
