// All that the reader of log files finds in a log, at once.
#pragma once

#include <string>
#include <vector>

#include "tools/evtlogctl/log_reader.h"

namespace listed_log {

struct Listed {
    EventLogInfoRecord info{};
    std::vector<EventLogEntryRecord> entries; // oldest first
    std::string damage;
    std::size_t overwritten = 0; // since it was known which entries the log has
};

inline Listed list(const std::string &path, std::size_t most = zusahpi::evtlogctl::allEntries) {
    const zusahpi::evtlogctl::LogFile file(path);
    const zusahpi::evtlogctl::Snapshot snapshot = zusahpi::evtlogctl::readLog(file, most);
    Listed result{.info = snapshot.info, .entries = {}, .damage = snapshot.damage};
    zusahpi::evtlogctl::SnapshotReader reader(file, snapshot);
    while (const EventLogEntryRecord *const entry = reader.next()) {
        result.entries.push_back(*entry);
    }
    result.overwritten = reader.overwritten();
    return result;
}

} // namespace listed_log
