// What an operator reads who uses the evtlog command wrongly.
#pragma once

#include "zuSaHpi_util.h"

namespace zusahpi::frontends {

void printUsage(zuSaHpiHandleT out);

} // namespace zusahpi::frontends
