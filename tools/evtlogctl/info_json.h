// The settings and the fill state of a log as members of a JSON object.
#pragma once

#include <string>

#include <sys/types.h>

#include "tools/evtlogctl/json_writer.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// The word of the configuration file for a value of a keyword, or what says that there is none.
[[nodiscard]] std::string wordOf(std::uint32_t keyword, std::uint32_t value);

// What the clock of the log shows now.
[[nodiscard]] SaHpiTimeT logTime(const EventLogInfoRecord &info);

// The log as it is described in one place of the file system.
struct DescribedLog {
    const std::string &path;
    off_t fileSize;
    const EventLogInfoRecord &info;
};

void putInfo(JsonWriter &out, const DescribedLog &log);

} // namespace zusahpi::evtlogctl
