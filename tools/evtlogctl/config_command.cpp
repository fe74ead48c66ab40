// evtlogctl config: what a configuration comes to, in the words of the configuration file, and the
// syslog map as a table.
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "constants/type_ids.h"
#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/json_writer.h"
#include "tools/evtlogctl/output.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::uint32_t syslogOnly = 3; // the value of EventLog for a log without a file

void setting(std::string &text, std::string_view name, std::string_view value) {
    text += fmt::format("{:<24}{}\n", name, shown(value));
}

// The name and the value as the configuration file writes them.
void keyword(std::string &text, std::uint32_t code, std::uint32_t value) {
    const char *const word = zuSaHpiConfigWord(code, value);
    setting(text, zuSaHpiConfigKeyword(code),
            word != nullptr ? std::string(word) : fmt::format("{}", value));
}

[[nodiscard]] std::string levelName(std::int32_t level) {
    const auto value = static_cast<std::uint32_t>(level);
    const char *const word = zuSaHpiConfigWord(ZUSAHPI_CONF_SYSLOG_LEVEL, value);
    return word != nullptr ? word : fmt::format("{}", level);
}

[[nodiscard]] std::string mapText() {
    std::string text = fmt::format("{:<24}{:<10}{:<10}{:<10}{:<15}{:<10}{}\n", "Syslog map",
                                   "critical", "major", "minor", "informational", "ok", "others");
    for (const SyslogMapEntry *entry = zuSaHpiSyslogMapHead; entry != nullptr;
         entry = entry->next) {
        const char *const type =
            zuSaHpiConfigWord(ZUSAHPI_CONF_SYSLOG_EVENT_TYPE, entry->eventType);
        const bool rest = entry->next == nullptr;
        text += fmt::format("  {:<22}{:<10}{:<10}{:<10}{:<15}{:<10}{}\n",
                            rest              ? "other event types"
                            : type != nullptr ? type
                                              : fmt::format("{}", entry->eventType),
                            levelName(entry->level[0]), levelName(entry->level[1]),
                            levelName(entry->level[2]), levelName(entry->level[3]),
                            levelName(entry->level[4]), levelName(entry->level[5]));
    }
    return text;
}

[[nodiscard]] std::string configText(const Settings &settings, const LogSetup &setup) {
    const EventLogControlBlock &block = *setup.block;
    const EventLogInfoRecord &info = block.info;
    std::string text;
    setting(text, "Configuration", configurationName(settings));
    setting(text, "Root", zuSaHpiRoot);
    setting(text, "Log file", block.fileEnabled != 0 ? setup.path : "none");
    keyword(text, ZUSAHPI_CONF_EVENT_LOG, block.fileEnabled != 0 ? info.type : syslogOnly);
    setting(text, zuSaHpiConfigKeyword(ZUSAHPI_CONF_FILE_NAME), block.fileName);
    keyword(text, ZUSAHPI_CONF_REINITIALIZE, block.reinitialize);
    keyword(text, ZUSAHPI_CONF_SIZE, info.sa.Size);
    keyword(text, ZUSAHPI_CONF_OVERFLOW, info.overflowAction);
    keyword(text, ZUSAHPI_CONF_USER_EVENT_MAX_SIZE, info.sa.UserEventMaxSize);
    keyword(text, ZUSAHPI_CONF_ENABLED, info.sa.Enabled);
    keyword(text, ZUSAHPI_CONF_RELATIVE_TIME, block.relativeTime);
    keyword(text, ZUSAHPI_CONF_OVERFLOW_RESETABLE, info.sa.OverflowResetable);
    keyword(text, ZUSAHPI_CONF_SYSLOG, block.syslogEnabled);
    keyword(text, ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE, block.syslogFollowsState);
    keyword(text, ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE, zuSaHpiSyslogSuppressResource);
    return text + mapText();
}

// ---- JSON ---------------------------------------------------------------------------------------

void putKeywordFlag(JsonWriter &out, std::uint32_t code, std::uint32_t value) {
    putFlag(out, zuSaHpiConfigKeyword(code), value != 0);
}

void putKeywordNumber(JsonWriter &out, std::uint32_t code, std::uint32_t value) {
    putNumber(out, zuSaHpiConfigKeyword(code), value);
}

// A value that has a word in the configuration file.
void putKeywordWord(JsonWriter &out, std::uint32_t code, std::uint32_t value) {
    putKeywordNumber(out, code, value);
    putKey(out, zuSaHpiConfigKeyword(code), "Name");
    if (const char *const word = zuSaHpiConfigWord(code, value)) {
        putString(out, word);
    } else {
        out.Null();
    }
}

// The severities of the slots of a map entry; the last slot is for all others.
constexpr SaHpiSeverityT slotSeverities[ZUSAHPI_SYSLOG_SLOTS - 1] = {
    SAHPI_CRITICAL, SAHPI_MAJOR, SAHPI_MINOR, SAHPI_INFORMATIONAL, SAHPI_OK};

void putLevel(JsonWriter &out, const SyslogMapEntry &entry, std::size_t slot) {
    out.StartObject();
    if (slot < std::size(slotSeverities)) {
        putConstant(out, "Severity", slotSeverities[slot], type_id::severity);
    } else {
        putNull(out, "Severity");
        putNull(out, "SeverityName");
    }
    putKey(out, "Level");
    if (entry.level[slot] < 0) { // not forwarded
        out.Null();
    } else {
        out.Int(entry.level[slot]);
    }
    putText(out, "LevelName", levelName(entry.level[slot]));
    out.EndObject();
}

void putSyslogMap(JsonWriter &out) {
    putKey(out, "SyslogMap");
    out.StartArray();
    for (const SyslogMapEntry *entry = zuSaHpiSyslogMapHead; entry != nullptr;
         entry = entry->next) {
        out.StartObject();
        if (entry->next != nullptr) {
            putConstant(out, "EventType", entry->eventType, type_id::eventType);
        } else { // of all types that have no entry of their own
            putNull(out, "EventType");
            putNull(out, "EventTypeName");
        }
        putKey(out, "Levels");
        out.StartArray();
        for (std::size_t slot = 0; slot < ZUSAHPI_SYSLOG_SLOTS; ++slot) {
            putLevel(out, *entry, slot);
        }
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

void putConfig(JsonWriter &out, const Settings &settings, const LogSetup &setup) {
    const EventLogControlBlock &block = *setup.block;
    const EventLogInfoRecord &info = block.info;
    if (settings.configFile) {
        putForeignText(out, "Configuration", *settings.configFile);
    } else {
        putNull(out, "Configuration");
    }
    putForeignText(out, "Root", zuSaHpiRoot);
    if (block.fileEnabled != 0) {
        putForeignText(out, "LogFile", setup.path);
    } else {
        putNull(out, "LogFile");
    }
    putKeywordWord(out, ZUSAHPI_CONF_EVENT_LOG, block.fileEnabled != 0 ? info.type : syslogOnly);
    putForeignText(out, zuSaHpiConfigKeyword(ZUSAHPI_CONF_FILE_NAME), block.fileName);
    putKeywordFlag(out, ZUSAHPI_CONF_REINITIALIZE, block.reinitialize);
    putKeywordNumber(out, ZUSAHPI_CONF_SIZE, info.sa.Size);
    putKeywordWord(out, ZUSAHPI_CONF_OVERFLOW, info.overflowAction);
    putKeywordNumber(out, ZUSAHPI_CONF_USER_EVENT_MAX_SIZE, info.sa.UserEventMaxSize);
    putKeywordFlag(out, ZUSAHPI_CONF_ENABLED, info.sa.Enabled);
    putKeywordFlag(out, ZUSAHPI_CONF_RELATIVE_TIME, block.relativeTime);
    putKeywordFlag(out, ZUSAHPI_CONF_OVERFLOW_RESETABLE, info.sa.OverflowResetable);
    putKeywordFlag(out, ZUSAHPI_CONF_SYSLOG, block.syslogEnabled);
    putKeywordFlag(out, ZUSAHPI_CONF_SYSLOG_FOLLOWS_STATE, block.syslogFollowsState);
    putKeywordFlag(out, ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE, zuSaHpiSyslogSuppressResource);
    putSyslogMap(out);
}

} // namespace

Status showConfig(const Settings &settings, OutputForm form) {
    const LogSetup setup = configure(settings);
    const auto put = [&](JsonWriter &out) { putConfig(out, settings, setup); };
    writeAll(stdout,
             form == OutputForm::text ? configText(settings, setup) : jsonObject(put) + "\n",
             standardOutput);
    flushAll(stdout, standardOutput);
    return Status::done;
}

} // namespace zusahpi::evtlogctl
