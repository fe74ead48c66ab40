// The lock that keeps a second process off a log file: a hard link of the name "<log file>.lck".
#pragma once

namespace zusahpi::eventlog {

// Takes the lock named store.lockPath for this process. Prints and exits when it cannot.
void takeLock();

// Removes the lock file; a failure is printed.
void dropLock();

} // namespace zusahpi::eventlog
