// What the info record of a log says. Its first part is of the HPI standard and has the standard's
// names; the log's own settings have those of the configuration file.
#include "tools/evtlogctl/info_json.h"

#include <fmt/format.h>

#include "constants/type_ids.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

// A value of the configuration file; beside X stands XName, its word or null.
void putSetting(JsonWriter &out, std::string_view name, std::uint32_t keyword,
                std::uint32_t value) {
    putNumber(out, name, value);
    const char *const word = zuSaHpiConfigWord(keyword, value);
    putKey(out, name, "Name");
    if (word != nullptr) {
        putString(out, word);
    } else {
        out.Null();
    }
}

void putEntryId(JsonWriter &out, std::string_view name, std::uint32_t number) {
    if (number == ZUSAHPI_EL_NO_ENTRY) {
        putNull(out, name);
    } else {
        putNumber(out, name, number);
    }
}

} // namespace

std::string wordOf(std::uint32_t keyword, std::uint32_t value) {
    const char *const word = zuSaHpiConfigWord(keyword, value);
    return word != nullptr ? word : fmt::format("unknown ({})", value);
}

// The clock of the log runs with that of the host. The offset is input: the sum wraps.
SaHpiTimeT logTime(const EventLogInfoRecord &info) {
    return static_cast<SaHpiTimeT>(static_cast<SaHpiUint64T>(zuSaHpiGetTimeofDay()) +
                                   static_cast<SaHpiUint64T>(info.timeOffset));
}

void putInfo(JsonWriter &out, const DescribedLog &log) {
    const EventLogInfoRecord &info = log.info;
    putForeignText(out, "File", log.path);
    putNumber(out, "FileSize", static_cast<std::uint64_t>(log.fileSize));
    putNumber(out, "Entries", info.sa.Entries);
    putNumber(out, "Size", info.sa.Size);
    putNumber(out, "UserEventMaxSize", info.sa.UserEventMaxSize);
    putTime(out, "UpdateTimestamp", info.sa.UpdateTimestamp);
    putTime(out, "CurrentTime", logTime(info));
    putFlag(out, "Enabled", info.sa.Enabled != SAHPI_FALSE);
    putFlag(out, "OverflowFlag", info.sa.OverflowFlag != SAHPI_FALSE);
    putFlag(out, "OverflowResetable", info.sa.OverflowResetable != SAHPI_FALSE);
    putConstant(out, "OverflowAction", info.sa.OverflowAction, type_id::eventLogOverflowAction);
    putSetting(out, "EventLog", ZUSAHPI_CONF_EVENT_LOG, info.type);
    putSetting(out, "Overflow", ZUSAHPI_CONF_OVERFLOW, info.overflowAction);
    putEntryId(out, "OldestEntry", info.oldest);
    putEntryId(out, "NewestEntry", info.newest);
    putNumber(out, "HighestNumberUsed", info.maxUsed);
    putEntryId(out, "FirstFreeEntry", info.freeHead);
    putFlag(out, "InterruptedUpdate", info.updating != 0);
}

} // namespace zusahpi::evtlogctl
