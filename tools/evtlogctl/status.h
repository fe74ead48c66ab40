// What the exit status of the program says. The one source of the numbers; docs/evtlogctl.md and
// the help text explain them.
#pragma once

namespace zusahpi::evtlogctl {

enum class Status : int {
    done = 0,
    findings = 1,      // nothing matched, something was left out, or a check found no damage but
                       // what is worth a look
    wrongUsage = 2,    // command line, configuration, severity table
    damaged = 3,       // the file is a damaged log, or no log
    systemRefused = 4, // a file, a permission, a lock, memory
};

} // namespace zusahpi::evtlogctl
