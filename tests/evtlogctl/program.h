// Runs the built evtlogctl as a user would.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace program {

struct Result {
    int exitStatus = -1; // -1 when it did not exit by itself
    std::string output;
    std::string errors;
};

using Environment = std::vector<std::pair<std::string, std::string>>;

// With `input` on its standard input, and with the variables of `environment` set.
Result run(const std::vector<std::string> &arguments, const std::string &input = "",
           const Environment &environment = {});

// With a terminal as its standard error; `errors` is what the terminal got.
Result runOnTerminal(const std::vector<std::string> &arguments);

// What is typed once the terminal has shown some text.
struct Typing {
    std::string awaited;
    std::string typed;
};

// With a terminal as all its standard streams; `output` is what the terminal showed. A text that
// does not show in all of a test's patience ends the talk, and the exit status is then -1. The
// terminal is of that kind and so many columns wide; with 0 it does not know its width.
Result talkOnTerminal(const std::vector<std::string> &arguments, const std::vector<Typing> &typings,
                      const std::string &kind = "dumb", unsigned short columns = 0);

// Without waiting for it, with its standard output and error in these files. The caller waits.
pid_t start(const std::vector<std::string> &arguments, const std::string &output = "/dev/null",
            const std::string &errors = "/dev/null");

// The same, with its standard output to a descriptor and its standard error to a file, and with a
// descriptor as its standard input unless that is negative.
pid_t startWith(const std::vector<std::string> &arguments, int output, const std::string &errors,
                int input = -1);

// Waits for it and returns its exit status.
int finish(pid_t process);

[[nodiscard]] std::size_t lineCount(const std::string &output);

} // namespace program
