// What a configuration makes of the process's control block and syslog map.
#pragma once

#include "tests/fuzz/harness.h"

namespace fuzz {

// Hands the tree to the library, whose refusals come back. What it accepts must be sound, and
// forwards events without harm. Afterwards all is as it was before.
void configure(const ConfigNode *nodes);

} // namespace fuzz
