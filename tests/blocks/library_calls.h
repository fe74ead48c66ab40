// The library's calls of open() and write(), which the linker brings here first (--wrap): a test
// does something right before one of them, or changes them as a mistake in the library would.
#pragma once

#include <functional>

namespace block_test {

// Calls `action` before the write to the log after the next `skip` ones, once.
void beforeWrite(int skip, std::function<void()> action);

// Forgets it. True when it was called.
bool endBeforeWrite();

// Before each write to the log from then on.
void waitBeforeWrites(unsigned microseconds);

enum class Defect {
    none,
    unsynced, // a Linked log is written without O_SYNC
    turned    // the flag is written before the records that it speaks of
};
void plantDefect(Defect defect);

} // namespace block_test
