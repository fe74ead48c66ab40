// Starting a child, collecting from it, ending it.
//
// A child has ended when its process has: one that it left behind with an open pipe does not count.
#include "tools/evtlogctl/child_process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/interruption.h"

namespace zusahpi::evtlogctl {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto never = Clock::time_point::max();
constexpr auto grace =
    std::chrono::milliseconds{500};      // from the request to end to the use of force
constexpr std::size_t errorsKept = 4096; // of a command

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {
    }
    ~Descriptor() {
        reset();
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int get() const {
        return number_;
    }
    void reset(int number = -1) {
        if (number_ >= 0) {
            (void)close(number_); // nothing that was written could be lost
        }
        number_ = number;
    }

  private:
    int number_;
};

struct Pipe {
    Descriptor in;
    Descriptor out;
};

void openPipe(Pipe &pipe) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        fail(Status::systemRefused, "a pipe cannot be made: {}; close other programs",
             systemError());
    }
    pipe.out.reset(ends[0]);
    pipe.in.reset(ends[1]);
    (void)fcntl(pipe.out.get(), F_SETFL, O_NONBLOCK); // a flag that every pipe takes
}

struct Child {
    pid_t id = -1;
    Descriptor handle; // readable when the child has ended
    Pipe output;
    Pipe errors;
};

// What may happen to a child, and how it is asked to end.
struct Rules {
    Clock::time_point deadline = never;
    std::size_t outputSize = std::numeric_limits<std::size_t>::max();
    std::size_t errorsSize = std::numeric_limits<std::size_t>::max(); // the last are kept
    bool byForce = false; // its whole group, and with SIGKILL when it does not end
};

// Takes what the pipe holds at the moment; closes it at its end.
void drain(Descriptor &from, std::string &to) {
    std::array<char, 65536> buffer{};
    while (from.get() >= 0) {
        const ssize_t count = read(from.get(), buffer.data(), buffer.size());
        if (count > 0) {
            to.append(buffer.data(), static_cast<std::size_t>(count));
            return; // the rest is taken when the limits have been looked at
        }
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0 && errno == EAGAIN) {
            return;
        }
        from.reset();
    }
}

void drainRest(Descriptor &from, std::string &to, std::size_t most) {
    std::size_t before = 0;
    do {
        before = to.size();
        drain(from, to);
    } while (to.size() > before && to.size() <= most);
}

void keepLast(std::string &text, std::size_t most) {
    if (text.size() > most) {
        text.erase(0, text.size() - most);
    }
}

void askToEnd(const Child &child, const Rules &rules, int signal) {
    (void)kill(rules.byForce ? -child.id : child.id, signal); // it may have ended by itself
}

[[nodiscard]] std::optional<std::chrono::milliseconds> timeUntil(Clock::time_point moment) {
    if (moment == never) {
        return std::nullopt;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now());
    return std::max(left, std::chrono::milliseconds{0});
}

// Why the child is to end now; empty when it may go on.
[[nodiscard]] std::optional<Ending> reasonToEnd(const Rules &rules, const ChildResult &result) {
    if (interrupted()) {
        return Ending::interrupted;
    }
    if (result.output.size() > rules.outputSize) {
        return Ending::outOfBounds;
    }
    if (Clock::now() >= rules.deadline) {
        return Ending::outOfTime;
    }
    return std::nullopt;
}

void takeStatus(const Child &child, ChildResult &result) {
    int status = 0;
    while (waitpid(child.id, &status, 0) < 0 && errno == EINTR) {
    }
    result.ending = WIFEXITED(status) ? Ending::exited : Ending::killed;
    result.code = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
}

// Waits for news of the child and takes what it wrote; false when it has ended.
[[nodiscard]] bool collectSome(Child &child, const Rules &rules, Clock::time_point moment,
                               ChildResult &result) {
    std::array<pollfd, 3> ready{{{child.handle.get(), POLLIN, 0},
                                 {child.output.out.get(), POLLIN, 0},
                                 {child.errors.out.get(), POLLIN, 0}}};
    waitForAny(ready, timeUntil(moment));
    drain(child.output.out, result.output);
    drain(child.errors.out, result.errors);
    keepLast(result.errors, rules.errorsSize);
    return ready[0].revents == 0;
}

void collectRest(Child &child, const Rules &rules, ChildResult &result) {
    drainRest(child.output.out, result.output, rules.outputSize);
    drainRest(child.errors.out, result.errors, rules.outputSize);
    keepLast(result.errors, rules.errorsSize);
}

// Until the child has ended.
[[nodiscard]] ChildResult collect(Child &child, const Rules &rules) {
    ChildResult result;
    std::optional<Ending> asked;
    Clock::time_point moment = rules.deadline;
    while (collectSome(child, rules, moment, result)) {
        if (asked && Clock::now() >= moment) {
            askToEnd(child, rules, SIGKILL);
            moment = never;
        }
        if (!asked) {
            asked = reasonToEnd(rules, result);
            if (asked) {
                askToEnd(child, rules, SIGTERM);
                moment = rules.byForce ? Clock::now() + grace : never;
            }
        }
        if (asked == Ending::outOfBounds) {
            result.output.clear(); // of no more use, and without end perhaps
        }
    }
    if (rules.byForce) {
        askToEnd(child, rules, SIGKILL); // what it left behind in its group
    }
    collectRest(child, rules, result);
    takeStatus(child, result);
    if (!asked && result.output.size() > rules.outputSize) {
        asked = Ending::outOfBounds;
    }
    if (asked) {
        result.ending = *asked;
    }
    return result;
}

void openHandle(Child &child) {
    // The C library of Debian 12 declares its function for C alone.
    child.handle.reset(static_cast<int>(syscall(SYS_pidfd_open, child.id, 0)));
    if (child.handle.get() < 0) {
        const std::string error = systemError();
        (void)kill(child.id, SIGKILL);
        (void)waitpid(child.id, nullptr, 0);
        fail(Status::systemRefused, "a process cannot be watched: {}; use a newer kernel", error);
    }
    child.output.in.reset();
    child.errors.in.reset();
}

// Returns an error number, 0 for success.
[[nodiscard]] int spawn(Child &child, const std::vector<std::string> &words) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    (void)posix_spawn_file_actions_init(&actions);
    (void)posix_spawnattr_init(&attributes);
    (void)posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    (void)posix_spawn_file_actions_adddup2(&actions, child.output.in.get(), STDOUT_FILENO);
    (void)posix_spawn_file_actions_adddup2(&actions, child.errors.in.get(), STDERR_FILENO);
    sigset_t usual;
    sigemptyset(&usual);
    (void)posix_spawnattr_setsigmask(&attributes, &usual);
    sigaddset(&usual, SIGPIPE); // ignored by us, which a program would inherit
    (void)posix_spawnattr_setsigdefault(&attributes, &usual);
    (void)posix_spawnattr_setpgroup(&attributes, 0);
    (void)posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                                    POSIX_SPAWN_SETPGROUP);
    std::vector<std::string> copies = words;
    std::vector<char *> pointers(copies.size() + 1); // a null pointer is the last
    std::transform(copies.begin(), copies.end(), pointers.begin(),
                   [](std::string &each) { return each.data(); });
    const int error =
        posix_spawnp(&child.id, pointers.front(), &actions, &attributes, pointers.data(), environ);
    (void)posix_spawnattr_destroy(&attributes);
    (void)posix_spawn_file_actions_destroy(&actions);
    return error;
}

// In the copy: as main() would end.
[[noreturn]] void leaveWith(const std::function<int()> &body) {
    int status = static_cast<int>(Status::systemRefused);
    try {
        status = body();
    } catch (const Failure &failure) {
        complain(failure.what());
        status = static_cast<int>(failure.status);
    } catch (const std::exception &error) {
        complain(fmt::format("unexpected failure: {}; please report it", error.what()));
    }
    std::exit(status);
}

} // namespace

ChildResult runCommand(const std::vector<std::string> &words, const CommandLimits &limits) {
    Child child;
    openPipe(child.output);
    openPipe(child.errors);
    if (const int error = spawn(child, words); error != 0) {
        return {.ending = Ending::notStarted, .code = error, .output = {}, .errors = {}};
    }
    openHandle(child);
    return collect(child, {.deadline = Clock::now() + limits.time,
                           .outputSize = limits.output,
                           .errorsSize = errorsKept,
                           .byForce = true});
}

ChildResult runCopy(const std::function<int()> &body) {
    Child child;
    openPipe(child.output);
    openPipe(child.errors);
    (void)std::fflush(nullptr); // the copy is not to write it again
    child.id = fork();
    if (child.id < 0) {
        return {.ending = Ending::notStarted, .code = errno, .output = {}, .errors = {}};
    }
    if (child.id == 0) {
        child.output.out.reset(); // a write is to fail, not to wait, when this process is gone
        child.errors.out.reset();
        (void)dup2(child.output.in.get(), STDOUT_FILENO);
        (void)dup2(child.errors.in.get(), STDERR_FILENO);
        admitInterruptions();
        leaveWith(body);
    }
    openHandle(child);
    return collect(child, {});
}

} // namespace zusahpi::evtlogctl
