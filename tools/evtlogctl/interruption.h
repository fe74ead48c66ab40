// Lets a command that holds the log's lock end in order when the user or the system asks it to: the
// lock is given up only by a process that exits by itself.
#pragma once

namespace zusahpi::evtlogctl {

// From now on SIGINT, SIGTERM and SIGHUP are only noted, and writing to a closed pipe fails instead
// of ending the process.
void noteInterruptions();

[[nodiscard]] bool interrupted();

} // namespace zusahpi::evtlogctl
