// The body of a control's RDR, an empty line first.
#pragma once

#include "zuSaHpi_util.h"

namespace zusahpi::display {

int printControlRecord(zuSaHpiHandleT out, const SaHpiCtrlRecT &record, const char *indent);

} // namespace zusahpi::display
