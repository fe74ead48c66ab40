// Any lines of an operator, carried out on a small log.
//
// The input: a byte for the log's type and overflow action, then lines without the word "evtlog".

#include <algorithm>

#include "tests/fuzz/harness.h"
#include "tests/fuzz/process_exit.h"
#include "tests/fuzz/running_log.h"

namespace {

using fuzz::Bytes;

constexpr std::uint32_t entriesOfLog = 2;
constexpr std::size_t mostLines = 16;
constexpr char command[] = "evtlog ";

// The line as typed, exactly as long as it is.
[[nodiscard]] fuzz::Memory<char> typed(Bytes line) {
    constexpr std::size_t length = sizeof command - 1;
    fuzz::Memory<char> text = fuzz::zeros<char>(length + line.size() + 1);
    std::memcpy(text.get(), command, length);
    if (!line.empty()) {
        std::memcpy(text.get() + length, line.data(), line.size());
    }
    return text;
}

void carryOut(Bytes line) {
    const fuzz::Memory<char> text = typed(line);
    const bool returned = fuzz::returns([&text] {
        (void)std::strtok(text.get(), " \t"); // the word is known
        zuSaHpiProcessEventLogCommand(fuzz::output());
    });
    fuzz::require(returned, "no line ends the process");
    fuzz::requireIdle();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    Bytes input(data, size);
    const EventLogControlBlock block = fuzz::controlBlock(fuzz::takeByte(input), entriesOfLog);
    fuzz::require(fuzz::startLog(block), "the log starts");
    for (std::size_t i = 0; i < mostLines && !input.empty(); ++i) {
        const auto end = std::find(input.begin(), input.end(), std::uint8_t{'\n'});
        carryOut(fuzz::take(input, static_cast<std::size_t>(end - input.begin())));
        (void)fuzz::take(input, 1); // the newline
    }
    fuzz::discardLog();
    return 0;
}
