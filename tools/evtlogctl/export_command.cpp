// evtlogctl export: the imported records of the log, byte for byte, oldest first.
#include <cstdio>
#include <memory>
#include <string>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace zusahpi::evtlogctl {
namespace {

void writeRecords(const std::string &file, const std::string &bytes) {
    if (file.empty() || file == "-") {
        writeAll(stdout, bytes, standardOutput);
        flushAll(stdout, standardOutput);
        return;
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> stream(std::fopen(file.c_str(), "wbe"),
                                                                  std::fclose);
    if (stream == nullptr) {
        fail(Status::systemRefused, "{} cannot be written: {}; check the name and its permissions",
             file, systemError());
    }
    writeAll(stream.get(), bytes, file);
    flushAll(stream.get(), file);
}

} // namespace

Status exportRecords(const Settings &settings, const std::string &file) {
    const LogFile logFile(existingLog(settings));
    const Snapshot log = readLog(logFile);
    SnapshotReader entries(logFile, log);
    std::string bytes;
    std::size_t others = 0;
    while (const EventLogEntryRecord *const entry = entries.next()) {
        if (const auto record = sel::importedRecord(*entry)) {
            bytes.append(record->bytes.begin(), record->bytes.end());
        } else {
            ++others;
        }
    }
    writeRecords(file, bytes);
    if (others > 0) {
        complain(fmt::format("{}: {} entries were not imported from SEL records and are left out",
                             logFile.path(), others));
    }
    return reportReading(logFile, log, entries, "were exported");
}

} // namespace zusahpi::evtlogctl
