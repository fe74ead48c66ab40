// Entries on standard output, in any form of `list`.
#pragma once

#include <string>

#include "tools/evtlogctl/list_options.h"

namespace zusahpi::evtlogctl {

// Throws Failure when standard output takes no more.
class EntryPrinter {
  public:
    EntryPrinter(ListForm form, bool coloured);

    void print(const EventLogEntryRecord &entry);

    // Nothing is left behind: to be called at the end, and whenever somebody waits for the entries.
    void flush();

  private:
    ListForm form_;
    bool coloured_;
    std::string lines_; // that were not yet written
};

} // namespace zusahpi::evtlogctl
