// The tables of docs/file-format.md say what the code says: every area and field with its offset
// and size.

#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "eventlog/log_format.h"

namespace {

using Place = std::pair<std::size_t, std::size_t>; // offset and size

#define FIELD(record, member)                                                                      \
    {                                                                                              \
#member, {                                                                                 \
            offsetof(record, member), sizeof(record::member)                                       \
        }                                                                                          \
    }
#define NESTED(record, outer, type, member)                                                        \
    {                                                                                              \
#outer "." #member, {                                                                      \
            offsetof(record, outer.member), sizeof(type::member)                                   \
        }                                                                                          \
    }

const std::map<std::string, Place> infoFields = {
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, Entries),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, Size),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, UserEventMaxSize),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, UpdateTimestamp),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, CurrentTime),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, Enabled),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, OverflowFlag),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, OverflowResetable),
    NESTED(EventLogInfoRecord, sa, SaHpiEventLogInfoT, OverflowAction),
    FIELD(EventLogInfoRecord, type),
    FIELD(EventLogInfoRecord, overflowAction),
    FIELD(EventLogInfoRecord, oldest),
    FIELD(EventLogInfoRecord, newest),
    FIELD(EventLogInfoRecord, freeHead),
    FIELD(EventLogInfoRecord, maxUsed),
    FIELD(EventLogInfoRecord, timeOffset),
    FIELD(EventLogInfoRecord, updating),
    FIELD(EventLogInfoRecord, reserved),
};

const std::map<std::string, Place> entryFields = {
    FIELD(EventLogEntryRecord, deleted),
    FIELD(EventLogEntryRecord, prev),
    FIELD(EventLogEntryRecord, next),
    FIELD(EventLogEntryRecord, reserved),
    NESTED(EventLogEntryRecord, entry, SaHpiEventLogEntryT, EntryId),
    NESTED(EventLogEntryRecord, entry, SaHpiEventLogEntryT, Timestamp),
    NESTED(EventLogEntryRecord, entry, SaHpiEventLogEntryT, Event),
    FIELD(EventLogEntryRecord, rpt),
    FIELD(EventLogEntryRecord, rdr),
};

// The rows "| offset | bytes | `field` |" under a heading, up to the next one.
std::map<std::string, Place> tableUnder(const std::string &heading) {
    std::ifstream document(ZUSAHPI_TEST_DATA "/../docs/file-format.md");
    const std::regex row("\\| (\\d+) \\| (\\d+) \\| `([^`]+)` \\|.*");
    std::map<std::string, Place> table;
    bool under = false;
    for (std::string line; std::getline(document, line);) {
        std::smatch match;
        if (line.starts_with("## ")) {
            under = line == "## " + heading;
        } else if (under && std::regex_match(line, match, row)) {
            table[match[3]] = {std::stoul(match[1]), std::stoul(match[2])};
        }
    }
    return table;
}

bool documentHasRow(const std::string &row) {
    std::ifstream document(ZUSAHPI_TEST_DATA "/../docs/file-format.md");
    for (std::string line; std::getline(document, line);) {
        if (line == row) {
            return true;
        }
    }
    return false;
}

TEST(FileFormatDocument, AreasAreThoseOfTheFormat) {
    using namespace zusahpi::eventlog;
    const std::string entries = std::to_string(entriesOffset);
    const std::string size = std::to_string(entrySize);
    EXPECT_TRUE(documentHasRow("| " + std::to_string(infoOffset) + " | " +
                               std::to_string(infoSize) + " | info record |"));
    EXPECT_TRUE(documentHasRow("| " + std::to_string(transactionLogOffset) + " | " +
                               std::to_string(transactionSlots * entrySize) +
                               " | transaction log area: four slots of one entry record each |"));
    EXPECT_TRUE(documentHasRow("| " + entries + " | " + size +
                               " for each entry | entry records: entry number n stands at " +
                               entries + " + (n - 1) × " + size + " |"));
}

TEST(FileFormatDocument, InfoRecordTableIsTheType) {
    EXPECT_EQ(tableUnder("The info record"), infoFields);
}

TEST(FileFormatDocument, EntryRecordTableIsTheType) {
    EXPECT_EQ(tableUnder("An entry record"), entryFields);
}

} // namespace
