// evtlogctl print and dump: any log file as the library prints it, records dead and alive.
#include <cstdio>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "eventlog/log_format.h"
#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/output.h"

namespace zusahpi::evtlogctl {

Status printLog(const Settings &settings, const std::string &file, LogForm form) {
    const std::string path = logToRead(settings, file);
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        fail(Status::systemRefused, "{} cannot be opened: {}; check the name and its permissions",
             path, systemError());
    }
    struct stat status {};
    // cppcheck-suppress invalidFunctionArg ; fail() does not return
    const bool examined = fstat(fd, &status) == 0;
    const bool isLog =
        examined && S_ISREG(status.st_mode) && status.st_size >= eventlog::entriesOffset;
    if (examined && S_ISREG(status.st_mode)) { // what it holds is shown even when it is no log
        (void)zuSaHpiPrintlog(reinterpret_cast<zuSaHpiHandleT>(stdout), fd,
                              form == LogForm::hex ? 1 : 0);
    }
    close(fd);
    flushAll(stdout, standardOutput);
    if (!isLog) {
        complain(fmt::format("{} is no log: it is shorter than an empty log, or no regular file; "
                             "name an event log file",
                             path));
        return Status::damaged;
    }
    return Status::done;
}

} // namespace zusahpi::evtlogctl
