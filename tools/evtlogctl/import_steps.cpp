// The steps of an import.
#include "tools/evtlogctl/import_steps.h"

#include <cerrno>
#include <cstdio>

#include <unistd.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/output.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr int evenWhenDisabled = 1; // the import is the user's wish, not an event that comes in

[[noreturn]] void failAsFull(const std::string &path, std::size_t added) {
    fail(Status::findings,
         "{} is full and takes no more entries, {} were added; give it a greater Size or another "
         "Overflow in the configuration",
         path, added);
}

} // namespace

sel::SeverityTable readSeverities(const std::string &file) {
    return file.empty() ? sel::builtInSeverities() : sel::parseSeverities(readAll(file), file);
}

std::vector<sel::Record> recordsOfLog(const LogSetup &setup) {
    std::vector<sel::Record> records;
    const bool exists = access(setup.path.c_str(), F_OK) == 0 || errno != ENOENT;
    if (setup.block->fileEnabled == 0 || !exists) {
        return records;
    }
    const LogFile file(setup.path);
    const Snapshot log = readLog(file);
    if (!log.damage.empty()) {
        fail(Status::damaged,
             "{} is damaged ({}), so it cannot be told which records it holds; add them all with "
             "--all",
             setup.path, log.damage);
    }
    SnapshotReader entries(file, log);
    while (const EventLogEntryRecord *const entry = entries.next()) {
        if (const auto record = sel::importedRecord(*entry)) {
            records.push_back(*record);
        }
    }
    return records;
}

bool hintAtOemOrder(const std::string &file, const std::vector<sel::Record> &records,
                    sel::OemOrder order) {
    const sel::OrderVotes votes = sel::orderVotes(records);
    const bool wire = order == sel::OemOrder::wire;
    const std::size_t chosen = wire ? votes.wire : votes.reversed;
    const std::size_t other = wire ? votes.reversed : votes.wire;
    if (other <= chosen) {
        return false;
    }
    complain(fmt::format("{}: the manufacturer ids of {} OEM records make sense only in the "
                         "other byte order; consider importing {} --ipmitool-order",
                         file, other, wire ? "with" : "without"));
    return true;
}

void requireRoom(const LogSetup &setup, std::size_t added) {
    SaHpiEventLogInfoT info{};
    (void)zuSaHpiEventLogInfoGet(&info); // cannot fail
    const bool drops = info.Size == 0 || setup.block->info.overflowAction == ZUSAHPI_EL_DROP;
    if (setup.block->fileEnabled != 0 && drops && info.Entries >= info.Size &&
        info.OverflowFlag != SAHPI_FALSE) {
        failAsFull(setup.path, added);
    }
}

void addRecord(const sel::Record &record, const sel::Mapping &mapping, std::size_t added,
               const std::string &path) {
    const EventLogAddRecord entry = sel::toEvent(record, mapping);
    const SaErrorT result = zuSaHpiEventLogEntryAdd(&entry, evenWhenDisabled);
    if (result == SA_ERR_HPI_OUT_OF_SPACE) {
        failAsFull(path, added);
    }
    if (result != SA_OK) {
        char unknown[ZUSAHPI_RETURN_CODE_SIZE];
        fail(result == SA_ERR_HPI_INTERNAL_ERROR ? Status::damaged : Status::systemRefused,
             "{} took {} entries, then failed with {}; check the disk and the log", path, added,
             zuSaHpiReturnCode(result, unknown));
    }
}

std::size_t entriesOfLog() {
    SaHpiEventLogInfoT info{};
    (void)zuSaHpiEventLogInfoGet(&info); // cannot fail
    return info.Entries;
}

void summarise(const std::string &file, const ImportCounts &counts, std::string_view remark) {
    std::string line = fmt::format("{}: {} records read, {} added, {} already known", shown(file),
                                   counts.read, counts.added, counts.known);
    if (counts.lost > 0) {
        line += fmt::format(", {} entries of the full log overwritten", counts.lost);
    }
    line += remark;
    writeAll(stdout, line + "\n", standardOutput);
    flushAll(stdout, standardOutput);
}

} // namespace zusahpi::evtlogctl
