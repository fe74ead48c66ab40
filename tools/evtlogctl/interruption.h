// Lets a command that holds the log's lock end in order when the user or the system asks it to: the
// lock is given up only by a process that exits by itself.
#pragma once

#include <chrono>
#include <optional>
#include <span>

#include <poll.h>

namespace zusahpi::evtlogctl {

// From now on SIGINT, SIGTERM and SIGHUP are only noted, and writing to a closed pipe fails instead
// of ending the process. SIGINT and SIGHUP stay ignored where they were from the start.
void noteInterruptions();

[[nodiscard]] bool interrupted();

// From now on one of these signals also turns standard output to nowhere, so that a long printout
// ends at once and the command behind it soon.
void silenceWhenInterrupted();

// For a command that waits: from now on these signals come in only while it waits below, so that
// none slips in between a look at interrupted() and the wait.
void deferInterruptions();

// In a copy of such a process: they come in at any time again.
void admitInterruptions();

// Waits until a descriptor is ready, the time has passed (never without one), or one of these
// signals comes in.
void waitForAny(std::span<pollfd> descriptors, std::optional<std::chrono::milliseconds> time);

} // namespace zusahpi::evtlogctl
