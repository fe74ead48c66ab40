// Running the built program: its arguments, its standard streams, its terminal.

#include "tests/evtlogctl/program.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "tests/support/files.h"
#include "tests/support/patience.h"

namespace program {
namespace {

[[noreturn]] void execute(const std::vector<std::string> &arguments) {
    std::vector<char *> pointers;
    std::string name = EVTLOGCTL_PROGRAM;
    pointers.push_back(name.data());
    std::vector<std::string> copies = arguments;
    for (std::string &each : copies) {
        pointers.push_back(each.data());
    }
    pointers.push_back(nullptr);
    execv(name.c_str(), pointers.data());
    _exit(126);
}

void redirect(const std::string &path, int flags, int to) {
    const int descriptor = open(path.c_str(), flags, 0600);
    if (descriptor < 0 || dup2(descriptor, to) < 0) {
        _exit(125);
    }
    close(descriptor);
}

} // namespace

Result run(const std::vector<std::string> &arguments, const std::string &input,
           const Environment &environment) {
    const test_support::ScratchFolder folder;
    test_support::writeFile(folder.file("in"), input);
    const pid_t child = fork();
    if (child == 0) {
        for (const auto &[name, value] : environment) {
            setenv(name.c_str(), value.c_str(), 1);
        }
        redirect(folder.file("in"), O_RDONLY, STDIN_FILENO);
        redirect(folder.file("out"), O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect(folder.file("err"), O_WRONLY | O_CREAT, STDERR_FILENO);
        execute(arguments);
    }
    Result result;
    result.exitStatus = finish(child);
    result.output = test_support::readFile(folder.file("out"));
    result.errors = test_support::readFile(folder.file("err"));
    return result;
}

Result runOnTerminal(const std::vector<std::string> &arguments) {
    int terminal = -1;
    int program = -1;
    if (openpty(&terminal, &program, nullptr, nullptr, nullptr) != 0) {
        throw std::runtime_error("cannot open a terminal");
    }
    const pid_t child = fork();
    if (child == 0) {
        redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        redirect("/dev/null", O_WRONLY, STDOUT_FILENO);
        dup2(program, STDERR_FILENO);
        execute(arguments);
    }
    close(program);
    Result result;
    std::array<char, 4096> buffer{};
    // The read fails when the last process has closed its side.
    for (ssize_t count = 0; (count = read(terminal, buffer.data(), buffer.size())) > 0;) {
        result.errors.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(terminal);
    result.exitStatus = finish(child);
    return result;
}

namespace {

// Appends what the terminal shows until `awaited` stands in it behind `from`, or, with nothing
// awaited, until the program has closed it. False: that did not come to pass in time.
bool readUntil(int terminal, const std::string &awaited, std::size_t from, std::string &shown) {
    std::array<char, 4096> buffer{};
    while (awaited.empty() || shown.find(awaited, from) == std::string::npos) {
        pollfd ready{.fd = terminal, .events = POLLIN, .revents = 0};
        constexpr std::chrono::milliseconds time = test_support::patience;
        if (poll(&ready, 1, static_cast<int>(time.count())) != 1) {
            return false;
        }
        const ssize_t count = read(terminal, buffer.data(), buffer.size());
        if (count <= 0) {
            return awaited.empty();
        }
        shown.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return true;
}

#if defined(EVTLOGCTL_EDITS_LINES)
constexpr bool editsLines = true;
#else
constexpr bool editsLines = false;
#endif

// The shell's line editor shows its prompt a moment before it takes the terminal over, and an end
// of file typed in between is lost. Other commands, and a shell without an editor, take none over.
bool awaitEditor(int terminal, const std::vector<std::string> &arguments) {
    const bool edits =
        editsLines && std::find(arguments.begin(), arguments.end(), "shell") != arguments.end();
    return !edits || test_support::comesTrue([terminal] {
        termios settings{};
        return tcgetattr(terminal, &settings) == 0 && (settings.c_lflag & ICANON) == 0;
    });
}

} // namespace

Result talkOnTerminal(const std::vector<std::string> &arguments, const std::vector<Typing> &typings,
                      const std::string &kind, unsigned short columns) {
    int terminal = -1;
    winsize size{};
    size.ws_col = columns;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        setenv("TERM", kind.c_str(), 1);
        execute(arguments);
    }
    Result result;
    bool inTime = true;
    for (const auto &[awaited, typed] : typings) {
        const std::size_t from = result.output.size();
        inTime = inTime && readUntil(terminal, awaited, from, result.output) &&
                 awaitEditor(terminal, arguments);
        inTime = inTime &&
                 write(terminal, typed.data(), typed.size()) == static_cast<ssize_t>(typed.size());
    }
    inTime = inTime && readUntil(terminal, "", 0, result.output);
    if (!inTime) {
        kill(child, SIGKILL);
    }
    close(terminal);
    result.exitStatus = finish(child);
    return result;
}

pid_t start(const std::vector<std::string> &arguments, const std::string &output,
            const std::string &errors) {
    const pid_t child = fork();
    if (child == 0) {
        redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        redirect(output, O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect(errors, O_WRONLY | O_CREAT, STDERR_FILENO);
        execute(arguments);
    }
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    return child;
}

pid_t startWith(const std::vector<std::string> &arguments, int output, const std::string &errors,
                int input) {
    const pid_t child = fork();
    if (child == 0) {
        if (input < 0) {
            redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        } else {
            dup2(input, STDIN_FILENO);
            close(input);
        }
        dup2(output, STDOUT_FILENO);
        close(output);
        redirect(errors, O_WRONLY | O_CREAT, STDERR_FILENO);
        execute(arguments);
    }
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    return child;
}

int finish(pid_t process) {
    int status = 0;
    if (waitpid(process, &status, 0) != process) {
        throw std::runtime_error("cannot wait for the program");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::size_t lineCount(const std::string &output) {
    return static_cast<std::size_t>(std::count(output.begin(), output.end(), '\n'));
}

} // namespace program
