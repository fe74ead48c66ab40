// A child process whose output is collected. It is ended when it takes too long or writes too much,
// and in a moment when this process is asked to end.
//
// The caller has called noteInterruptions() and deferInterruptions().
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace zusahpi::evtlogctl {

enum class Ending {
    notStarted,  // the system refused; code is the error number
    exited,      // code is the exit status
    killed,      // code is the signal
    outOfTime,   // ended by us
    outOfBounds, // wrote more than it may, ended by us
    interrupted, // this process was asked to end, so the child was, too
};

struct ChildResult {
    Ending ending = Ending::notStarted;
    int code = 0;
    std::string output;
    std::string errors; // the last of what it wrote to standard error
};

struct CommandLimits {
    std::chrono::milliseconds time{};
    std::size_t output = 0; // bytes
};

// Runs a program with its words, found along PATH, with nothing on its standard input. It leads a
// process group of its own, so that what it started is ended with it.
[[nodiscard]] ChildResult runCommand(const std::vector<std::string> &words,
                                     const CommandLimits &limits);

// Runs `body` in a copy of this process, which leaves with the exit status that `body` returns, by
// exit(), so that what the library has to do at the end is done. The child is never ended by force:
// interrupted() tells it when it is asked to end. What `body` throws becomes a complaint.
[[nodiscard]] ChildResult runCopy(const std::function<int()> &body);

} // namespace zusahpi::evtlogctl
