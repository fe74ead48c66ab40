// Hex dumps to the system log: the lines of every other dump, without an empty line at the end.

#include "util/hex_dump.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

void syslogDump(int priority, const void *data, uint32_t length) {
    using namespace zusahpi;
    HexDump dump = hexDumpOf(data, length);
    HexDumpLine line;
    while (nextHexDumpLine(dump, line)) {
        zuSaHpiSyslog(priority, "%s\n", line.text);
    }
}
