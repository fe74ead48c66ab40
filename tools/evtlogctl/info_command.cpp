// evtlogctl info: the settings of a log and how full it is.
#include <cstdio>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/info_json.h"
#include "tools/evtlogctl/local_time.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/output.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] std::string yesOrNo(std::uint32_t value) {
    return value != 0 ? "yes" : "no";
}

[[nodiscard]] std::string entryName(std::uint32_t number) {
    return number == ZUSAHPI_EL_NO_ENTRY ? "none" : fmt::format("{}", number);
}

[[nodiscard]] std::string infoText(const DescribedLog &log) {
    const EventLogInfoRecord &info = log.info;
    std::string text;
    const auto line = [&text](std::string_view label, const std::string &value) {
        text += fmt::format("{:<20}{}\n", label, value);
    };
    line("File", shown(log.path));
    line("File size", fmt::format("{} bytes", log.fileSize));
    line("Type", wordOf(ZUSAHPI_CONF_EVENT_LOG, info.type));
    line("When full", wordOf(ZUSAHPI_CONF_OVERFLOW, info.overflowAction));
    line("Size", fmt::format("{} entries", info.sa.Size));
    line("Entries", fmt::format("{}", info.sa.Entries));
    line("Oldest entry", entryName(info.oldest));
    line("Newest entry", entryName(info.newest));
    line("Highest number used", fmt::format("{}", info.maxUsed));
    line("First free entry", entryName(info.freeHead));
    line("Overflow flag", yesOrNo(info.sa.OverflowFlag));
    line("Overflow resetable", yesOrNo(info.sa.OverflowResetable));
    line("Enabled", yesOrNo(info.sa.Enabled));
    line("User event data", fmt::format("at most {} bytes", info.sa.UserEventMaxSize));
    line("Last change", timeText(info.sa.UpdateTimestamp));
    line("Log time", timeText(logTime(info)));
    line("Interrupted update", yesOrNo(info.updating));
    return text;
}

} // namespace

Status showInfo(const Settings &settings, const std::string &file, OutputForm form) {
    const std::string path = logToRead(settings, file);
    const LogInfo read = readLogInfo(path);
    const DescribedLog log{.path = path, .fileSize = read.fileSize, .info = read.info};
    writeAll(stdout, form == OutputForm::text ? infoText(log) : jsonObject([&](JsonWriter &out) {
                                                                    putInfo(out, log);
                                                                }) + "\n",
             standardOutput);
    flushAll(stdout, standardOutput);
    return Status::done;
}

} // namespace zusahpi::evtlogctl
