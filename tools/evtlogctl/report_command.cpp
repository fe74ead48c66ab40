// evtlogctl report: a log as one page of HTML.
#include <cstdio>
#include <memory>
#include <string>

#include <sys/stat.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/new_file.h"
#include "tools/evtlogctl/output.h"
#include "tools/evtlogctl/path.h"
#include "tools/evtlogctl/report_data.h"
#include "tools/evtlogctl/report_page.h"

namespace zusahpi::evtlogctl {
namespace {

[[nodiscard]] Status writePage(const LogFile &file, std::size_t newest, const Sink &to) {
    const Snapshot snapshot = readLog(file);
    to(pageBegin);
    const Status status = writeReportData(file, snapshot, newest, to);
    to(pageEnd);
    return status;
}

[[nodiscard]] Status writeToStream(const LogFile &file, std::size_t newest, std::FILE *stream,
                                   const std::string &name) {
    const Status status =
        writePage(file, newest, [&](std::string_view piece) { writeAll(stream, piece, name); });
    flushAll(stream, name);
    return status;
}

[[nodiscard]] Status writeInPlace(const LogFile &file, std::size_t newest,
                                  const std::string &name) {
    NewFile page(withoutLinks(name)); // what a link leads to is replaced, not the link
    const Status status = writePage(
        file, newest, [&](std::string_view piece) { page.write(piece.data(), piece.size()); });
    page.keepInPlace();
    return status;
}

// A device or a pipe cannot be replaced: it is written to.
[[nodiscard]] Status writeToDevice(const LogFile &file, std::size_t newest,
                                   const std::string &name) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> stream(std::fopen(name.c_str(), "wbe"),
                                                                  std::fclose);
    if (stream == nullptr) {
        fail(Status::systemRefused, "{} cannot be written: {}; check the name and its permissions",
             name, systemError());
    }
    return writeToStream(file, newest, stream.get(), name);
}

} // namespace

Status writeReport(const Settings &settings, const PageOptions &options) {
    const LogFile file(logToRead(settings, options.file));
    if (options.output == "-") {
        return writeToStream(file, options.newest, stdout, standardOutput);
    }
    struct stat page {};
    const bool exists = stat(options.output.c_str(), &page) == 0;
    if (exists && S_ISREG(page.st_mode)) {
        const struct stat log = file.status();
        if (page.st_dev == log.st_dev && page.st_ino == log.st_ino) {
            fail(Status::wrongUsage, "{} is the log itself; name another file for the page",
                 options.output);
        }
    }
    return exists && !S_ISREG(page.st_mode) ? writeToDevice(file, options.newest, options.output)
                                            : writeInPlace(file, options.newest, options.output);
}

} // namespace zusahpi::evtlogctl
