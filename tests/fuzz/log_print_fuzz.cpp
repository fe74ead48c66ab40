// Any file printed or dumped as a log.

#include "tests/fuzz/harness.h"

namespace {

// A byte of the info record that means nothing chooses between the two.
[[nodiscard]] bool asDump(const std::uint8_t *data, std::size_t size) {
    constexpr std::size_t choice = offsetof(EventLogInfoRecord, reserved) + 1;
    return size > choice && data[choice] % 2 != 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const int fd = fuzz::memoryFile({data, size});
    // Its result tells how the output went, and that is dropped.
    (void)zuSaHpiPrintlog(fuzz::output(), fd, asDump(data, size) ? 1 : 0);
    return 0;
}
