// The part of the configuration that builds the syslog map.
#pragma once

#include "zuSaHpi_util.h"

namespace zusahpi::config {

// Adds the event types under a syslog keyword to the map and stores its switches in the block and
// in zuSaHpiSyslogSuppressResource. An unknown keyword prints a warning, every other error ends the
// process.
void configureSyslogMap(const ConfigNode &syslog, EventLogControlBlock &block);

} // namespace zusahpi::config
