// What the event log itself holds: its info record, and an entry with its event.

#include "display/indent.h"
#include "display/named_type.h"
#include "display/time_line.h"
#include "display/words.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

int zuSaHpiPrintEventLogInfo(zuSaHpiHandleT out, const SaHpiEventLogInfoT *info,
                             const char *indent) {
    using namespace zusahpi::display;
    zuSaHpiPrintf(out, "%sEntries              %u\n", indent, info->Entries);
    zuSaHpiPrintf(out, "%sSize                 %u\n", indent, info->Size);
    zuSaHpiPrintf(out, "%sUserEventMaxSize     %u\n", indent, info->UserEventMaxSize);
    printTime(out, "UpdateTimestamp      ", info->UpdateTimestamp, indent);
    printTime(out, "CurrentTime          ", info->CurrentTime, indent);
    zuSaHpiPrintf(out, "%sEnabled              %s\n", indent, yesOrNo(info->Enabled));
    zuSaHpiPrintf(out, "%sOverflowFlag         %s\n", indent, yesOrNo(info->OverflowFlag));
    zuSaHpiPrintf(out, "%sOverflowResetable    %s\n", indent, yesOrNo(info->OverflowResetable));
    return printValue(out, "OverflowAction     ", info->OverflowAction, named_type::overflowAction,
                      indent);
}

int zuSaHpiPrintEventLogEntry(zuSaHpiHandleT out, const SaHpiEventLogEntryT *entry,
                              const char *indent) {
    using namespace zusahpi::display;
    constexpr std::size_t eventBlanks = 6;
    zuSaHpiPrintf(out, "%sEntryId: %u\n", indent, entry->EntryId);
    // The log stamps every entry, so that the unspecified time is shown like any other.
    printTime(out, "Timestamp: ", entry->Timestamp, indent);
    zuSaHpiPrintf(out, "%sEvent:\n", indent);
    return zuSaHpiPrintEvent(out, &entry->Event, composedIndent(indent, eventBlanks).text);
}
