// Messages of failed system calls, and fatal ones.

#include "eventlog/failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "util/diagnostics.h"

namespace zusahpi::eventlog {

void reportSystemError(const char *purpose) {
    zuSaHpiPrintf(diagnostics(), "%s:%s\n", purpose, std::strerror(errno));
}

SaErrorT internalError(const char *text) {
    zuSaHpiPrintf(diagnostics(), "%s", text);
    return SA_ERR_HPI_INTERNAL_ERROR;
}

SaErrorT internalError(const char *head, const char *rest) {
    (void)internalError(head);
    return internalError(rest);
}

void die(const char *text) {
    zuSaHpiPrintf(diagnostics(), "%s", text);
    std::exit(EXIT_FAILURE);
}

void dieOfSystemError(const char *purpose) {
    reportSystemError(purpose);
    std::exit(EXIT_FAILURE);
}

} // namespace zusahpi::eventlog
