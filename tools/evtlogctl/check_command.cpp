// evtlogctl check: what is wrong with a log file, and its entries saved to a new one.
#include <cstdio>
#include <string>
#include <string_view>

#include <unistd.h>

#include <fmt/format.h>

#include "mainlib/default_mainlib.h"
#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_check.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/salvage.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] std::string soundLine(const std::string &path, const CheckedLog &log) {
    const EventLogInfoRecord &info = log.info;
    const std::uint32_t unused =
        eventlog::typeOf(info) == eventlog::LogType::linked ? info.maxUsed - info.sa.Entries : 0;
    return fmt::format("{}: sound: {} log, {} of {} entries, {} free records, {} bytes", path,
                       zuSaHpiConfigWord(ZUSAHPI_CONF_EVENT_LOG, info.type), info.sa.Entries,
                       info.sa.Size, unused, log.status.st_size);
}

[[nodiscard]] std::string countLine(const std::string &path, const Findings &findings) {
    const std::size_t count = findings.damages + findings.notices;
    return fmt::format("{}: {} {}, {} of damage", path, count, count == 1 ? "finding" : "findings",
                       findings.damages);
}

[[nodiscard]] Status statusOf(const Findings &findings) {
    if (findings.damages > 0) {
        return Status::damaged;
    }
    return findings.notices > 0 ? Status::findings : Status::done;
}

void salvageTo(const LogFile &file, const CheckedLog &log, const std::string &to) {
    if (!log.readable) {
        fail(Status::damaged, "{} is shorter than an empty log, so there is nothing to save",
             file.path());
    }
    const std::vector<std::uint32_t> numbers = salvageable(log);
    writeSalvage(file, log, numbers, to);
    writeAll(stdout,
             fmt::format("{}: {} entries saved; the log counts {}\n", to, numbers.size(),
                         log.info.sa.Entries),
             standardOutput);
    flushAll(stdout, standardOutput);
}

} // namespace

Status checkLogFile(const Settings &settings, const CheckOptions &options) {
    const std::string path = logToRead(settings, options.file);
    if (!options.salvage.empty() && access(options.salvage.c_str(), F_OK) == 0) {
        fail(Status::systemRefused, "{} exists already; name a new file", options.salvage);
    }
    const LogFile file(path);
    const CheckedLog log = checkRestingLog(file, options.all ? allOfAKind : Findings{}.mostOfAKind);
    const Status status = statusOf(log.findings);
    writeAll(stdout,
             linesOf(log.findings) +
                 (status == Status::done ? soundLine(path, log) : countLine(path, log.findings)) +
                 "\n",
             standardOutput);
    flushAll(stdout, standardOutput);
    if (!options.salvage.empty()) {
        salvageTo(file, log, options.salvage);
    }
    return status;
}

} // namespace zusahpi::evtlogctl
