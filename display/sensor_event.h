// The bodies of the two event types that a sensor raises, each line begun with the indent.
#pragma once

#include "zuSaHpi_util.h"

namespace zusahpi::display {

int printSensorEvent(zuSaHpiHandleT out, const SaHpiSensorEventT &event, const char *indent);

int printSensorEnableChange(zuSaHpiHandleT out, const SaHpiSensorEnableChangeEventT &event,
                            const char *indent);

} // namespace zusahpi::display
