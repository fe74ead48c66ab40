// evtlogctl list --follow: the newest entries of a log, and then each that another process adds.
#pragma once

#include <string>

#include "tools/evtlogctl/list_options.h"
#include "tools/evtlogctl/status.h"

namespace zusahpi::evtlogctl {

// Goes on until the process is ended or nobody reads standard output any more; then the status is
// done. Throws Failure when the log cannot be read at the beginning.
[[nodiscard]] Status followLog(const std::string &path, const ListOptions &options);

} // namespace zusahpi::evtlogctl
