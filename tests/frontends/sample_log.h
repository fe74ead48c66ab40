// A log to be printed: an event with everything that an entry can hold, whose text is known, and
// texts that expected outputs are made of.
#pragma once

#include <cstdint>
#include <string>

#include "tests/eventlog/store_fixture.h"

namespace sample_log {

// A user event of a system board, "disk full", with an RPT entry and an inventory RDR.
EventLogAddRecord boardEvent();

// An entry record made of an event.
EventLogEntryRecord recordOf(std::uint32_t id, const EventLogAddRecord &added,
                             std::uint32_t prev = store_test::none,
                             std::uint32_t next = store_test::none);

// A log file with an info record and empty transaction log slots.
store_test::FileImage emptyFile(const EventLogInfoRecord &info);

// How userEvent(2) is shown in an entry that begins its lines with `indent`, up to and without what
// follows the event.
std::string userEventText(std::uint32_t id, const std::string &indent);

// A file of tests/frontends/data.
std::string expectedText(const std::string &name);

} // namespace sample_log
