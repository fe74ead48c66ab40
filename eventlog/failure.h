// How the store reports failures: one line on standard error, and for those of initialisation the
// end of the process.
#pragma once

#include "hpi/SaHpi.h"

namespace zusahpi::eventlog {

// Prints "<purpose>:<text of errno>".
void reportSystemError(const char *purpose);

// Prints the text as it stands. Returns SA_ERR_HPI_INTERNAL_ERROR.
SaErrorT internalError(const char *text);

// The same for a text that goes out in two prints.
SaErrorT internalError(const char *head, const char *rest);

// Prints the text as it stands and exits with status 1.
[[noreturn]] void die(const char *text);

// Reports a system error and exits with status 1.
[[noreturn]] void dieOfSystemError(const char *purpose);

} // namespace zusahpi::eventlog
