// evtlogctl stat: what the entries of a log come to.
#include <cstdio>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/stat_counts.h"
#include "tools/evtlogctl/stat_json.h"
#include "tools/evtlogctl/stat_text.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] std::size_t outputWidth() {
    constexpr std::size_t usual = 80;
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : usual;
}

} // namespace

Status showStatistics(const Settings &settings, const StatOptions &options) {
    const LogFile file(logToRead(settings, options.file));
    const Snapshot snapshot = readLog(file);
    SnapshotReader entries(file, snapshot);
    const LogCounts counts = countEntries(entries);
    const DescribedLog log{.path = file.path(), .fileSize = file.size(), .info = snapshot.info};
    const auto put = [&](JsonWriter &out) { putStatistics(out, log, counts, options.rows); };
    writeAll(stdout,
             options.form == OutputForm::json
                 ? jsonObject(put) + "\n"
                 : statisticsText(log, counts, {.rows = options.rows, .width = outputWidth()}),
             standardOutput);
    flushAll(stdout, standardOutput);
    return reportReading(file, snapshot, entries, "are counted");
}

} // namespace zusahpi::evtlogctl
