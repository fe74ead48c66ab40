// Any requests of a client to a small log.
//
// The input: a byte for the log's type and overflow action, one that is not zero for a log that is
// started, then requests of a type byte (or a type of four bytes behind 255), an alignment byte,
// half the payload's length and the payload.

#include <algorithm>

#include "tests/fuzz/harness.h"
#include "tests/fuzz/process_exit.h"
#include "tests/fuzz/running_log.h"

namespace {

using fuzz::Bytes;

constexpr std::uint32_t entriesOfLog = 2;
constexpr std::size_t mostRequests = 16;

// Offsets in a message.
constexpr std::size_t sizeAt = 108;
constexpr std::size_t typeAt = 112;
constexpr std::size_t returnCodeAt = 116;
constexpr std::size_t restOfHeaderAt = 120;
constexpr std::size_t payloadAt = 128;
constexpr std::uint8_t untouched = 0xA5;

// What each request may read and its reply write, and what its reply is.
struct Kind {
    std::uint32_t type;
    std::size_t payload;
    std::uint32_t replyType;
    std::uint32_t replySize; // 0: left as it was
    bool onlyOnSuccess;      // a failure leaves type and size alone
};

constexpr Kind kinds[] = {
    {10, 40, 11, 56, true},   {12, 328, 13, 344, true}, {14, 452, 15, 468, true},
    {16, 728, 17, 744, true}, {18, 296, 19, 16, false}, {20, 0, 20, 0, false},
    {21, 0, 21, 0, false},    {22, 32, 23, 16, false},  {24, 33, 25, 16, false},
};

[[nodiscard]] const Kind *kindOf(std::uint32_t type) {
    const auto *const found = std::find_if(std::begin(kinds), std::end(kinds),
                                           [&](const Kind &kind) { return kind.type == type; });
    return found == std::end(kinds) ? nullptr : found;
}

[[nodiscard]] std::uint32_t numberAt(const std::uint8_t *message, std::size_t offset) {
    std::uint32_t number = 0;
    std::memcpy(&number, message + offset, sizeof number);
    return number;
}

void requireReply(const std::uint8_t *message, const Kind &kind, bool started) {
    constexpr auto unknownSize = 0xA5A5A5A5U;
    const auto code = static_cast<SaErrorT>(numberAt(message, returnCodeAt));
    const bool replied = started && (code == SA_OK || !kind.onlyOnSuccess);
    fuzz::require(started || code == SA_ERR_HPI_INVALID_CMD, "nothing is served before the start");
    fuzz::require(code <= SA_OK, "the return code is one");
    fuzz::require(numberAt(message, typeAt) == (replied ? kind.replyType : kind.type),
                  "the message has the type of its reply");
    fuzz::require(numberAt(message, sizeAt) ==
                      (replied && kind.replySize != 0 ? kind.replySize : unknownSize),
                  "the message has the size of its reply");
    const auto isUntouched = [](std::uint8_t byte) { return byte == untouched; };
    fuzz::require(std::all_of(message, message + sizeAt, isUntouched),
                  "the transport's bytes are left alone");
    fuzz::require(std::all_of(message + restOfHeaderAt, message + payloadAt, isUntouched),
                  "the rest of the header is left alone");
    fuzz::requireInitialised(message, payloadAt + kind.payload);
}

void serve(std::uint32_t type, std::size_t alignment, Bytes payload, bool started) {
    const Kind *const kind = kindOf(type);
    const std::size_t room = kind != nullptr ? kind->payload : 0;
    const fuzz::Memory<std::uint8_t> memory =
        fuzz::zeros<std::uint8_t>(alignment + payloadAt + room);
    std::uint8_t *const message = memory.get() + alignment;
    std::memset(message, untouched, payloadAt);
    std::memcpy(message + typeAt, &type, sizeof type);
    if (const std::size_t count = std::min(room, payload.size()); count > 0) {
        std::memcpy(message + payloadAt, payload.data(), count);
    }
    int result = 0;
    const bool returned = fuzz::returns([&] { result = zuSaHpiEvtLogRequest(message); });
    fuzz::require(returned == (kind != nullptr || !started),
                  "an unknown request of a started log, and nothing else, ends the process");
    fuzz::require(result == 0, "the function's own result is 0");
    if (returned && kind != nullptr) {
        requireReply(message, *kind, started);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    Bytes input(data, size);
    const std::uint8_t choice = fuzz::takeByte(input);
    const bool started = fuzz::takeByte(input) != 0;
    if (started) {
        fuzz::require(fuzz::startLog(fuzz::controlBlock(choice, entriesOfLog)), "the log starts");
    }
    for (std::size_t i = 0; i < mostRequests && !input.empty(); ++i) {
        constexpr std::uint8_t longType = 0xFF;
        const std::uint8_t type = fuzz::takeByte(input);
        const std::uint32_t wholeType =
            type == longType ? fuzz::takeValue<std::uint32_t>(input) : type;
        const std::size_t alignment = fuzz::takeByte(input) % 8;
        const std::size_t length = std::size_t{2} * fuzz::takeByte(input);
        serve(wholeType, alignment, fuzz::take(input, length), started);
        if (started) {
            fuzz::requireIdle();
        }
    }
    fuzz::discardLog();
    return 0;
}
