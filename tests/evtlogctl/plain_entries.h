// Entries of another program than the import: without RPT entry and RDR.
#pragma once

#include <cstring>
#include <string_view>

#include "tests/evtlogctl/sel_samples.h"
#include "zuSaHpi_util.h"

namespace plain_entries {

// When the event of a plain entry happened: 2023-12-19T04:16:51.25Z.
inline constexpr SaHpiTimeT happened = 1'702'959'411'250'000'000;

// Entry 7, a major event of resource 5; what is peculiar to the type is zero.
inline EventLogEntryRecord plainEntry(SaHpiEventTypeT type) {
    EventLogEntryRecord entry;
    std::memset(&entry, 0, sizeof entry);
    entry.entry.EntryId = 7;
    entry.entry.Timestamp = sel_samples::loggedAt;
    entry.entry.Event.Source = 5;
    entry.entry.Event.EventType = type;
    entry.entry.Event.Timestamp = happened;
    entry.entry.Event.Severity = SAHPI_MAJOR;
    return entry;
}

// The text must fit; the buffer's language stays.
inline void putText(SaHpiTextBufferT &buffer, std::string_view text,
                    SaHpiTextTypeT type = SAHPI_TL_TYPE_TEXT) {
    buffer.DataType = type;
    buffer.DataLength = static_cast<SaHpiUint8T>(text.size());
    std::memcpy(buffer.Data, text.data(), text.size());
}

} // namespace plain_entries
