// The output of the main library that the fuzz targets run with: every text is formatted, so that
// whatever it is made of is read, and dropped.

#include "tests/fuzz/harness.h"

#include <cstdarg>

#include "zuSaHpi_mainlib.h"

namespace fuzz {
namespace {

char channel;

// How long a width, a precision or flags go on.
[[nodiscard]] bool isModifier(char letter) {
    return letter != '\0' && std::strchr("0123456789.-+ #hljzt", letter) != nullptr;
}

template <typename T>
void requireNext(va_list *arguments) {
    const T value = va_arg(*arguments, T);
    requireInitialised(&value, sizeof value);
}

void requireConversion(char conversion, int longs, va_list *arguments) {
    switch (conversion) {
    case 's':
    case 'p':
        return requireNext<const void *>(arguments);
    case 'e':
    case 'f':
    case 'g':
        return requireNext<double>(arguments);
    default:
        return longs > 1   ? requireNext<long long>(arguments)
               : longs > 0 ? requireNext<long>(arguments)
                           : requireNext<int>(arguments);
    }
}

// The C library formats numbers out of the memory sanitizer's sight, so they are looked at here.
void requireArguments(const char *format, va_list *arguments) {
    while ((format = std::strchr(format, '%')) != nullptr) {
        int longs = 0;
        for (++format; isModifier(*format) || *format == '*'; ++format) {
            longs += *format == 'l' ? 1 : 0;
            if (*format == '*') {
                requireNext<int>(arguments);
            }
        }
        if (*format == '\0') {
            return;
        }
        if (*format != '%') {
            requireConversion(*format, longs, arguments);
        }
        ++format;
    }
}

__attribute__((format(printf, 1, 0))) int formatAndDrop(const char *format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    requireArguments(format, &again);
    va_end(again);
    char text[256];
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    require(length >= 0, "a text can be formatted");
    return length;
}

} // namespace

zuSaHpiHandleT output() {
    return reinterpret_cast<zuSaHpiHandleT>(&channel);
}

} // namespace fuzz

int zuSaHpiPrintf(zuSaHpiHandleT handle, const char *format, ...) {
    fuzz::require(handle == fuzz::output() || handle == reinterpret_cast<zuSaHpiHandleT>(stderr),
                  "the handle is one that was given to the library");
    va_list arguments;
    va_start(arguments, format);
    const int length = fuzz::formatAndDrop(format, arguments);
    va_end(arguments);
    return length;
}

void zuSaHpiSyslog(int priority, const char *format, ...) {
    fuzz::require(priority >= 0 && priority <= 7, "the syslog level is one");
    va_list arguments;
    va_start(arguments, format);
    (void)fuzz::formatAndDrop(format, arguments); // nobody asks for its length
    va_end(arguments);
}
