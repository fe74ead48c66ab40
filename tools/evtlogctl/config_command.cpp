// evtlogctl config: what a configuration comes to, in the words of the configuration file, and the
// syslog map as a table.
#include <cstdio>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "mainlib/default_mainlib.h"
#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/output.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::uint32_t syslogOnly = 3; // the value of EventLog for a log without a file

void setting(std::string &text, std::string_view name, std::string_view value) {
    text += fmt::format("{:<24}{}\n", name, value);
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

} // namespace

Status showConfig(const Settings &settings) {
    const LogSetup setup = configure(settings);
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
    writeAll(stdout, text + mapText(), standardOutput);
    flushAll(stdout, standardOutput);
    return Status::done;
}

} // namespace zusahpi::evtlogctl
