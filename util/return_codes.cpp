// Names of return codes. The table runs from SA_ERR_HPI_ERROR downwards, one row for each code.

#include <array>
#include <cstdio>

#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

constexpr SaErrorT firstError = SA_ERR_HPI_ERROR;
constexpr SaErrorT lastError = SA_ERR_HPI_UNKNOWN;

constexpr std::array errorNames = {
    "SA_ERR_HPI_ERROR",
    "SA_ERR_HPI_UNSUPPORTED_API",
    "SA_ERR_HPI_BUSY",
    "SA_ERR_HPI_INTERNAL_ERROR",
    "SA_ERR_HPI_INVALID_CMD",
    "SA_ERR_HPI_TIMEOUT",
    "SA_ERR_HPI_OUT_OF_SPACE",
    "SA_ERR_HPI_OUT_OF_MEMORY",
    "SA_ERR_HPI_INVALID_PARAMS",
    "SA_ERR_HPI_INVALID_DATA",
    "SA_ERR_HPI_NOT_PRESENT",
    "SA_ERR_HPI_NO_RESPONSE",
    "SA_ERR_HPI_DUPLICATE",
    "SA_ERR_HPI_INVALID_SESSION",
    "SA_ERR_HPI_INVALID_DOMAIN",
    "SA_ERR_HPI_INVALID_RESOURCE",
    "SA_ERR_HPI_INVALID_REQUEST",
    "SA_ERR_HPI_ENTITY_NOT_PRESENT",
    "SA_ERR_HPI_READ_ONLY",
    "SA_ERR_HPI_CAPABILITY",
    "SA_ERR_HPI_UNKNOWN",
};
static_assert(errorNames.size() == firstError - lastError + 1);

} // namespace
} // namespace zusahpi

const char *zuSaHpiReturnCode(SaErrorT code, char *buffer) {
    using namespace zusahpi;
    if (code == SA_OK) {
        return "SA_OK";
    }
    if (code <= firstError && code >= lastError) {
        return errorNames[static_cast<std::size_t>(firstError - code)];
    }
    if (buffer == nullptr) {
        return "Undefined Return Code";
    }
    (void)std::snprintf(buffer, ZUSAHPI_RETURN_CODE_SIZE, "Undefined Return Code: %ld",
                        static_cast<long>(code));
    return buffer;
}
