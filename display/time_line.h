// A line that shows a time, in the words of the main library.
#pragma once

#include "zuSaHpi_mainlib.h"

namespace zusahpi::display {

inline int printTime(zuSaHpiHandleT out, const char *label, SaHpiTimeT time, const char *indent) {
    char buffer[ZUSAHPI_TIME_TEXT_SIZE + 1];
    return zuSaHpiPrintf(out, "%s%s%s\n", indent, label, zuSaHpiTimeT2String(time, 0, buffer));
}

} // namespace zusahpi::display
