// A disk that fails in the middle of a commit, then works again.
#pragma once

#include "tests/blocks/power_failures.h"

namespace block_test {

// Writes of the log's own data fail now and then; the process goes on. Then every image of a power
// failure is judged, as if it had met this process.
Outcome tryWriteErrors(const Run &run);

// The whole disk fails in the middle of a commit, `steps` times, until the process has ended; then
// the file system is repaired, and the log started on it: an image each.
Outcome tryDeadDisks(const Run &run);

} // namespace block_test
