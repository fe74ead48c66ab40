// A line that names an entry of the log, or the lack of one.
#pragma once

#include <cstdint>

#include "zuSaHpi_util.h"

namespace zusahpi::frontends {

// Prints label and number, SAHPI_LAST_ENTRY for ZUSAHPI_EL_NO_ENTRY. Returns what the print
// returned.
int printEntryNumber(zuSaHpiHandleT out, const char *label, std::uint32_t number);

} // namespace zusahpi::frontends
