// The body of a sensor's RDR, an empty line first.
#pragma once

#include <cstdint>

#include "zuSaHpi_util.h"

namespace zusahpi::display {

// floatAccuracy: as for zuSaHpiRdrDisplay.
int printSensorRecord(zuSaHpiHandleT out, const SaHpiSensorRecT &record, const char *indent,
                      std::uint32_t floatAccuracy);

} // namespace zusahpi::display
