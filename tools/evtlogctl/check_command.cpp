// evtlogctl check: what is wrong with a log file, and its entries saved to a new one.
#include <cstdio>
#include <string>
#include <string_view>

#include <unistd.h>

#include <fmt/format.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/json_writer.h"
#include "tools/evtlogctl/log_check.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/salvage.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] std::string soundLine(const std::string &path, const CheckedLog &log) {
    const EventLogInfoRecord &info = log.info;
    const std::uint32_t unused =
        eventlog::typeOf(info) == eventlog::LogType::linked ? info.maxUsed - info.sa.Entries : 0;
    return fmt::format("{}: sound: {} log, {} of {} entries, {} free records, {} bytes",
                       shown(path), zuSaHpiConfigWord(ZUSAHPI_CONF_EVENT_LOG, info.type),
                       info.sa.Entries, info.sa.Size, unused, log.status.st_size);
}

[[nodiscard]] std::string countLine(const std::string &path, const Findings &findings) {
    const std::size_t count = findings.damages + findings.notices;
    return fmt::format("{}: {} {}, {} of damage", shown(path), count,
                       count == 1 ? "finding" : "findings", findings.damages);
}

[[nodiscard]] Status statusOf(const Findings &findings) {
    if (findings.damages > 0) {
        return Status::damaged;
    }
    return findings.notices > 0 ? Status::findings : Status::done;
}

// What is known of the log, whatever state it is in; the last line but for what was saved.
void putSummary(JsonWriter &out, const std::string &path, const CheckedLog &log) {
    const Findings &findings = log.findings;
    putForeignText(out, "File", path);
    putNumber(out, "FileSize", static_cast<std::uint64_t>(log.status.st_size));
    putNumber(out, "Findings", findings.damages + findings.notices);
    putNumber(out, "Damages", findings.damages);
    putNumber(out, "Notices", findings.notices);
    putNumber(out, "LeftOut", leftOut(findings));
}

[[nodiscard]] std::string resultText(const std::string &path, const CheckedLog &log,
                                     OutputForm form) {
    if (form == OutputForm::json) {
        return jsonLinesOf(log.findings) +
               jsonObject([&](JsonWriter &out) { putSummary(out, path, log); }) + "\n";
    }
    const bool sound = statusOf(log.findings) == Status::done;
    return linesOf(log.findings) + (sound ? soundLine(path, log) : countLine(path, log.findings)) +
           "\n";
}

[[nodiscard]] std::string salvageText(const std::string &to, std::size_t saved,
                                      const CheckedLog &log, OutputForm form) {
    if (form == OutputForm::text) {
        return fmt::format("{}: {} entries saved; the log counts {}\n", shown(to), saved,
                           log.info.sa.Entries);
    }
    const auto put = [&](JsonWriter &out) {
        putForeignText(out, "SalvageFile", to);
        putNumber(out, "Saved", saved);
        putNumber(out, "Entries", log.info.sa.Entries);
    };
    return jsonObject(put) + "\n";
}

void salvageTo(const LogFile &file, const CheckedLog &log, const CheckOptions &options) {
    if (!log.readable) {
        fail(Status::damaged, "{} is shorter than an empty log, so there is nothing to save",
             file.path());
    }
    const std::vector<std::uint32_t> numbers = salvageable(log);
    writeSalvage(file, log, numbers, options.salvage);
    writeAll(stdout, salvageText(options.salvage, numbers.size(), log, options.form),
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
    writeAll(stdout, resultText(path, log, options.form), standardOutput);
    flushAll(stdout, standardOutput);
    if (!options.salvage.empty()) {
        salvageTo(file, log, options);
    }
    return statusOf(log.findings);
}

} // namespace zusahpi::evtlogctl
