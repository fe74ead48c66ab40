// Output: the handle is the FILE * to print to, so that every stream of C is a channel.
#include <cstdarg>
#include <cstdio>

#include "zuSaHpi_mainlib.h"

int zuSaHpiPrintf(zuSaHpiHandleT handle, const char *format, ...) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface hands pointers as integers
    auto *const stream = reinterpret_cast<FILE *>(handle);
    if (stream == nullptr) {
        return -1;
    }
    va_list arguments;
    va_start(arguments, format);
    const int result = std::vfprintf(stream, format, arguments);
    va_end(arguments);
    return result;
}
