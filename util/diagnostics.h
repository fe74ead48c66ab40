// Where the library's diagnostics go: standard error, through the main library's output.
#pragma once

#include <cstdio>

#include "zuSaHpi_mainlib.h"

namespace zusahpi {

[[nodiscard]] inline zuSaHpiHandleT diagnostics() {
    return reinterpret_cast<zuSaHpiHandleT>(stderr);
}

} // namespace zusahpi
