// The steps of an import, for one from a file and for one that goes on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/evtlogctl/sel_input.h"
#include "tools/evtlogctl/sel_mapping.h"
#include "tools/evtlogctl/sel_severity.h"
#include "tools/evtlogctl/settings.h"

namespace zusahpi::evtlogctl {

struct ImportCounts {
    std::size_t read = 0;
    std::size_t added = 0;
    std::size_t known = 0;
    std::size_t lost = 0; // older entries of the full log that were overwritten
};

// `file` empty: the built-in table. Throws Failure.
[[nodiscard]] sel::SeverityTable readSeverities(const std::string &file);

// The records that the entries of the log were made from, oldest first; none without a log. Needs
// no lock. Throws Failure when the log cannot be read whole.
[[nodiscard]] std::vector<sel::Record> recordsOfLog(const LogSetup &setup);

// Complains when most manufacturer ids make sense in the other order only; true when it did.
bool hintAtOemOrder(const std::string &file, const std::vector<sel::Record> &records,
                    sel::OemOrder order);

// Throws Failure, as addRecord() would, when the started log refuses more entries and has noted
// that it refused one. To ask it again would only forward the event again.
void requireRoom(const LogSetup &setup, std::size_t added);

// Adds an entry to the started log. Throws Failure, which says how many were `added` before.
void addRecord(const sel::Record &record, const sel::Mapping &mapping, std::size_t added,
               const std::string &path);

// Of the started log.
[[nodiscard]] std::size_t entriesOfLog();

// Prints the line that ends an import, with a remark at its end.
void summarise(const std::string &file, const ImportCounts &counts, std::string_view remark = {});

} // namespace zusahpi::evtlogctl
