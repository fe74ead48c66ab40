// Any text as a time, read by the default main library.

#include <string_view>

#include "mainlib/time_parse.h"
#include "tests/fuzz/harness.h"
#include "zuSaHpi_mainlib.h"

namespace {

using namespace zusahpi::mainlib;

constexpr SaHpiTimeT present = 1'700'000'000'123'456'789;

void requireText(SaHpiTimeT time) {
    char text[ZUSAHPI_TIME_TEXT_SIZE];
    const char *const shown = zuSaHpiTimeT2String(time, 0, text);
    fuzz::require(strnlen(shown, sizeof text) < sizeof text, "a time's text ends");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Memory<char> bare = fuzz::zeros<char>(size);
    if (size > 0) {
        std::memcpy(bare.get(), data, size);
    }
    const TimeReading reading = readTime({bare.get(), size}, present);
    fuzz::require(reading.error == TimeError::none || reading.time == SAHPI_TIME_UNSPECIFIED,
                  "an error comes without a time");
    requireText(reading.time);

    const fuzz::Memory<char> text = fuzz::textOf({data, size});
    int error = -1;
    const SaHpiTimeT time = zuSaHpiString2TimeT(text.get(), 0, &error);
    fuzz::require(error >= 0 && error < ZUSAHPI_TIME_ERRORS, "the error has a message");
    fuzz::require(error == 0 || time == SAHPI_TIME_UNSPECIFIED, "an error comes without a time");
    fuzz::require(std::memchr(bare.get(), '\0', size) != nullptr ||
                      error == static_cast<int>(reading.error),
                  "the text reads the same with its end marked");
    return 0;
}
