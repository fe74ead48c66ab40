// zuSaHpiProcessEventLogCommand: a line of the evtlog command is one operation of the store and its
// printed result. Nothing is carried out before the line is known to be right, but for `state`.
//
// Invariant: the caller's strtok() scan is the only access to the line; each sub-command takes the
// words that it wants from it, in order, and what a word or the rest of the line holds is read up
// to its NUL and no further.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>

#include "frontends/entry_number.h"
#include "frontends/hex_decode.h"
#include "frontends/usage_text.h"
#include "util/number_base.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::frontends {
namespace {

// The scan is the caller's, so that it cannot be that of strtok_r(), which cppcheck asks for.
[[nodiscard]] char *nextWord() {
    // cppcheck-suppress strtokCalled ; the caller began the scan with it
    return std::strtok(nullptr, " \t");
}

// All that follows the one blank behind the last word, or null.
[[nodiscard]] char *restOfLine() {
    // cppcheck-suppress strtokCalled ; the caller began the scan with it
    return std::strtok(nullptr, "");
}

// Words are told by their first letter alone, in either case. NUL where there is no word.
[[nodiscard]] char letterOf(const char *word) {
    const char letter = word == nullptr ? '\0' : *word;
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// Prints a line whose format takes the name of a return code.
void printError(zuSaHpiHandleT out, const char *purpose, SaErrorT code) {
    char buffer[ZUSAHPI_RETURN_CODE_SIZE];
    zuSaHpiPrintf(out, "Event Log error%s: %s\n", purpose, zuSaHpiReturnCode(code, buffer));
}

void printResult(zuSaHpiHandleT out, SaErrorT code) {
    char buffer[ZUSAHPI_RETURN_CODE_SIZE];
    zuSaHpiPrintf(out, "Event Log %s %s\n",
                  code == SA_OK ? "returned" : "error:", zuSaHpiReturnCode(code, buffer));
}

// Takes a word that selects an entry: its number, or an end of the log. Numbers are limited to 32
// bits on every host, as they are where a long has 32.
[[nodiscard]] std::optional<std::uint32_t> takeEntrySelector() {
    constexpr long long limit = std::numeric_limits<std::uint32_t>::max();
    const char *word = nextWord();
    switch (letterOf(word)) {
    case '\0':
        return std::nullopt;
    case 'o':
        return SAHPI_OLDEST_ENTRY;
    case 'n':
        return SAHPI_NEWEST_ENTRY;
    default:
        break;
    }
    char *rest = nullptr;
    const long long number = std::strtoll(word, &rest, baseOf(word));
    if (*rest != '\0') {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(number < -limit || number > limit ? limit : number);
}

void runInfo(zuSaHpiHandleT out) {
    if (nextWord() != nullptr) {
        printUsage(out);
        return;
    }
    SaHpiEventLogInfoT info;
    if (const SaErrorT result = zuSaHpiEventLogInfoGet(&info); result != SA_OK) {
        printError(out, "", result);
        return;
    }
    zuSaHpiPrintEventLogInfo(out, &info, "");
}

void printNeighbour(zuSaHpiHandleT out, const char *label, const char *none, std::uint32_t number) {
    if (number == SAHPI_NO_MORE_ENTRIES) {
        zuSaHpiPrintf(out, "%s\n", none);
    } else {
        printEntryNumber(out, label, number);
    }
}

void runEntry(zuSaHpiHandleT out) {
    const std::optional<std::uint32_t> selected = takeEntrySelector();
    if (!selected) {
        printUsage(out);
        return;
    }
    EventLogEntryRecord record;
    if (const SaErrorT result = zuSaHpiEventLogEntryGet(*selected, &record); result != SA_OK) {
        printError(out, "", result);
        return;
    }
    zuSaHpiPrintf(out, "Event Entry:\n");
    zuSaHpiPrintEventLogEntry(out, &record.entry, "     ");
    if (record.rpt.ResourceCapabilities != 0) {
        zuSaHpiPrintf(out, "RPT Entry:\n");
        zuSaHpiRptDisplay(out, &record.rpt, "     ");
    } else {
        zuSaHpiPrintf(out, "No RPT Entry\n");
    }
    zuSaHpiPrintf(out, "\n");
    if (record.rdr.RdrType != SAHPI_NO_RECORD) {
        zuSaHpiPrintf(out, "RDR:\n");
        zuSaHpiRdrDisplay(out, &record.rdr, "     ", 0);
    } else {
        zuSaHpiPrintf(out, "No RDR\n");
    }
    zuSaHpiPrintf(out, "\n");
    printNeighbour(out, "Previous Entry: ", "No Earlier Entries", record.prev);
    printNeighbour(out, "Next Entry:     ", "No Later Entries", record.next);
    zuSaHpiPrintf(out, "\n");
}

void runDelete(zuSaHpiHandleT out) {
    const std::optional<std::uint32_t> selected = takeEntrySelector();
    if (!selected) {
        printUsage(out);
        return;
    }
    printResult(out, zuSaHpiEventLogEntryDel(*selected, 0));
}

void runClear(zuSaHpiHandleT out) {
    if (nextWord() != nullptr) {
        printUsage(out);
        return;
    }
    printResult(out, zuSaHpiEventLogClear());
}

void runReset(zuSaHpiHandleT out) {
    if (nextWord() != nullptr) {
        printUsage(out);
        return;
    }
    printResult(out, zuSaHpiEventLogResetOverflow());
}

void runTime(zuSaHpiHandleT out) {
    const char *text = restOfLine();
    if (text == nullptr) {
        printUsage(out);
        return;
    }
    int errorIndex = 0;
    const SaHpiTimeT time = zuSaHpiString2TimeT(text, 0, &errorIndex);
    if (time == SAHPI_TIME_UNSPECIFIED) {
        const bool known = errorIndex >= 0 && errorIndex < ZUSAHPI_TIME_ERRORS;
        zuSaHpiPrintf(out, "Time conversion error: %s\n",
                      zuSaHpiTimeErrMsg[known ? errorIndex : 0]);
        return;
    }
    printResult(out, zuSaHpiEventLogTimeSet(time));
}

// Carries out the state word; nothing for a word that is none.
[[nodiscard]] std::optional<SaErrorT> changeState(const char *word) {
    switch (letterOf(word)) {
    case 'e':
        return zuSaHpiEventLogStateSet(SAHPI_TRUE);
    case 'd':
        return zuSaHpiEventLogStateSet(SAHPI_FALSE);
    case 'p':
        return zuSaHpiEventLogProtectSet(SAHPI_TRUE);
    case 'u':
        return zuSaHpiEventLogProtectSet(SAHPI_FALSE);
    default:
        return std::nullopt;
    }
}

// Words too many come to light only after the state was changed.
void runState(zuSaHpiHandleT out) {
    const std::optional<SaErrorT> result = changeState(nextWord());
    if (!result || nextWord() != nullptr) {
        printUsage(out);
        return;
    }
    printResult(out, *result);
}

void runPrint(zuSaHpiHandleT out) {
    switch (letterOf(nextWord())) {
    case '\0':
        zuSaHpiPrintEventLog(out, 0);
        return;
    case 'd':
        zuSaHpiPrintEventLog(out, 1);
        return;
    default:
        printUsage(out);
        return;
    }
}

// The data of a user event as typed. Bad binary data have a length of -1, the highest number there
// is, so that they are always cut to the log's limit.
struct UserData {
    SaHpiTextTypeT type;
    const char *data;
    std::uint32_t length;
    std::size_t available; // how much of it the line holds; length may be more
};

[[nodiscard]] UserData takeUserData(zuSaHpiHandleT out, char *text) {
    if (*text == '/') {
        const std::span<char> digits(text + 1, std::strlen(text + 1));
        const std::int32_t length = decodeHex(digits);
        if (length < 0) {
            zuSaHpiPrintf(out, "Bad binary data\n");
        }
        return {.type = SAHPI_TL_TYPE_BINARY,
                .data = digits.data(),
                .length = static_cast<std::uint32_t>(length),
                .available = digits.size()};
    }
    if (*text == '\'') {
        ++text;
    }
    const std::size_t length = std::strlen(text);
    return {.type = SAHPI_TL_TYPE_TEXT,
            .data = text,
            .length = static_cast<std::uint32_t>(length),
            .available = length};
}

[[nodiscard]] EventLogAddRecord userEventOf(const UserData &data) {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.Source = SAHPI_UNSPECIFIED_RESOURCE_ID;
    record.event.EventType = SAHPI_ET_USER;
    record.event.Timestamp = zuSaHpiTime();
    record.event.Severity = SAHPI_INFORMATIONAL;
    SaHpiTextBufferT &buffer = record.event.EventDataUnion.UserEvent.UserEventData;
    buffer.DataType = data.type;
    buffer.Language = SAHPI_LANG_UNDEF;
    buffer.DataLength = static_cast<SaHpiUint8T>(data.length & 0xFF);
    const std::size_t asked = std::min<std::size_t>(data.length, sizeof buffer.Data);
    std::memcpy(buffer.Data, data.data, std::min(asked, data.available));
    record.rpt.ResourceCapabilities = 0;
    record.rdr.RdrType = SAHPI_NO_RECORD;
    return record;
}

void runAdd(zuSaHpiHandleT out) {
    char *text = restOfLine();
    if (text != nullptr) {
        text += std::strspn(text, " \t");
    }
    if (text == nullptr || *text == '\0') {
        printUsage(out);
        return;
    }
    SaHpiEventLogInfoT info;
    if (const SaErrorT result = zuSaHpiEventLogInfoGet(&info); result != SA_OK) {
        printError(out, " reading info record", result);
        return;
    }
    UserData data = takeUserData(out, text);
    if (data.length > info.UserEventMaxSize) {
        zuSaHpiPrintf(out, "User Event truncated to %d characters.\n",
                      static_cast<int>(info.UserEventMaxSize));
        data.length = info.UserEventMaxSize;
    }
    const EventLogAddRecord record = userEventOf(data);
    printResult(out, zuSaHpiEventLogEntryAdd(&record, 1)); // also while the log is disabled
}

void runSubCommand(zuSaHpiHandleT out) {
    switch (letterOf(nextWord())) {
    case 'i':
        return runInfo(out);
    case 'e':
        return runEntry(out);
    case 'd':
        return runDelete(out);
    case 'c':
        return runClear(out);
    case 'r':
        return runReset(out);
    case 't':
        return runTime(out);
    case 's':
        return runState(out);
    case 'p':
        return runPrint(out);
    case 'a':
        return runAdd(out);
    default:
        return printUsage(out);
    }
}

} // namespace
} // namespace zusahpi::frontends

void zuSaHpiProcessEventLogCommand(zuSaHpiHandleT out) {
    if (zuSaHpiEventLogInitialized() == 0) {
        zuSaHpiPrintf(out, "No event log configured.\n");
        return;
    }
    zusahpi::frontends::runSubCommand(out);
}
