// The store's side of each operation, and the comparison. Of the store's inside only its state as a
// whole is used, to begin it afresh and to go back.

#include "tests/model/store_check.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <unistd.h>

#include "tests/support/files.h"
#include "tests/support/log_soundness.h"
#include "tests/support/test_mainlib.h"

namespace store_model {
namespace {

constexpr SaHpiTimeT firstMoment = 1'000'000'000'000;
constexpr SaHpiTimeT timeOfAStep = 1'000'000'001;

std::string takeDiagnostics() {
    std::string text;
    text.swap(test_mainlib::state().diagnostics);
    return text;
}

// What a comparison is about: put into words only when it fails, since millions of them do not.
struct About {
    const char *what;
    std::optional<std::uint32_t> number = std::nullopt;
};

std::string textOf(const About &about) {
    return about.number ? std::string(about.what) + " " + std::to_string(*about.number)
                        : std::string(about.what);
}

template <typename T>
void expectEqual(std::string &difference, const About &about, T found, T expected) {
    if (found != expected) {
        difference += textOf(about) + ": the store has " + std::to_string(found) + ", the model " +
                      std::to_string(expected) + "\n";
    }
}

void expectBytes(std::string &difference, const About &about, const void *found,
                 const void *expected, std::size_t size) {
    if (std::memcmp(found, expected, size) == 0) {
        return;
    }
    std::size_t offset = 0;
    while (static_cast<const char *>(found)[offset] ==
           static_cast<const char *>(expected)[offset]) {
        ++offset;
    }
    difference += textOf(about) + ": differs at byte " + std::to_string(offset) + "\n";
}

SaHpiEventLogOverflowActionT reportedAction(const Settings &settings) {
    return settings.whenFull == WhenFull::drop ? SAHPI_EL_OVERFLOW_DROP
                                               : SAHPI_EL_OVERFLOW_OVERWRITE;
}

EventLogControlBlock blockOf(const std::string &path, const Settings &settings) {
    EventLogControlBlock block;
    std::memset(&block, 0, sizeof block);
    block.size = 208;
    block.magic = 0x17394283;
    block.info.sa.Size = settings.size;
    block.info.sa.UserEventMaxSize = settings.userEventMaxSize;
    block.info.sa.Enabled = settings.enabled ? 1 : 0;
    block.info.sa.OverflowResetable = settings.overflowResetable ? 1 : 0;
    block.info.sa.OverflowAction = reportedAction(settings);
    block.info.type = static_cast<std::uint32_t>(settings.type);
    block.info.overflowAction = static_cast<std::uint32_t>(settings.whenFull);
    block.info.oldest = none;
    block.info.newest = none;
    block.info.freeHead = none;
    block.reinitialize = settings.reinitialize ? 1 : 0;
    block.relativeTime = settings.relativeTime ? 1 : 0;
    path.copy(block.fileName, sizeof block.fileName - 1);
    block.fileEnabled = settings.fileEnabled ? 1 : 0;
    return block;
}

SaErrorT startStore(const std::string &path, const Settings &settings) {
    std::memset(&zusahpi::eventlog::store, 0, sizeof zusahpi::eventlog::store);
    memory_disk::machine().catchExitHandlers = true;
    EventLogControlBlock block = blockOf(path, settings);
    const SaErrorT result = zuSaHpiEventLogInit(&block);
    memory_disk::machine().catchExitHandlers = false;
    return result;
}

void killStore(const Pair &pair) {
    if (pair.model.withFile) {
        close(zusahpi::eventlog::store.fd);
        unlink((pair.path + ".lck").c_str());
    }
    memory_disk::killProcess();
}

SaErrorT restartStore(const Pair &pair, const Operation &operation) {
    if (operation.kind == Kind::kill) {
        killStore(pair);
    } else {
        memory_disk::exitProcess();
    }
    return startStore(pair.path, settingsOfStart(operation, logOf(pair.model).settings));
}

SaErrorT applyToStore(const Pair &pair, const Operation &operation) {
    const std::uint32_t size = logOf(pair.model).settings.size;
    EventLogEntryRecord ignored;
    switch (operation.kind) {
    case Kind::add:
    case Kind::addForced: {
        const EventLogAddRecord added = contentOf(operation.argument, pair.model.serial + 1);
        return zuSaHpiEventLogEntryAdd(&added, operation.kind == Kind::addForced ? 1 : 0);
    }
    case Kind::deleteOldest:
        return zuSaHpiEventLogEntryDel(SAHPI_OLDEST_ENTRY, 0);
    case Kind::deleteNewest:
        return zuSaHpiEventLogEntryDel(SAHPI_NEWEST_ENTRY, 0);
    case Kind::deleteNumber:
        return zuSaHpiEventLogEntryDel(idOf(operation, size), 0);
    case Kind::clear:
        return zuSaHpiEventLogClear();
    case Kind::resetOverflow:
        return zuSaHpiEventLogResetOverflow();
    case Kind::setTime:
        return zuSaHpiEventLogTimeSet(timeOf(operation));
    case Kind::setState:
        return zuSaHpiEventLogStateSet(turnsOn(operation) ? 0xFF : SAHPI_FALSE);
    case Kind::protect:
        return zuSaHpiEventLogProtectSet(static_cast<SaHpiBoolT>(operation.argument & 1));
    case Kind::read: // only moves the caches; what reads return is looked at afterwards
        (void)zuSaHpiEventLogEntryGet(idOf(operation, size), &ignored);
        return SA_OK;
    default:
        return restartStore(pair, operation);
    }
}

EventLogEntryRecord recordOf(const Entry &entry) {
    const EventLogAddRecord added = contentOf(entry.argument, entry.serial);
    EventLogEntryRecord record;
    std::memset(&record, 0, 32); // all before the event; the rest is copied byte for byte
    record.prev = none;
    record.next = none;
    record.entry.EntryId = entry.number;
    record.entry.Timestamp = entry.time;
    std::memcpy(&record.entry.Event, &added.event, sizeof added.event);
    std::memcpy(&record.rpt, &added.rpt, sizeof added.rpt);
    std::memcpy(&record.rdr, &added.rdr, sizeof added.rdr);
    return record;
}

std::uint32_t numberAt(const Log &log, std::size_t place, std::uint32_t atAnEnd) {
    return place < log.entries.size() ? log.entries[place].number : atAnEnd;
}

// What a read returns, or, for a Linked log, also what lies in the file.
EventLogEntryRecord recordWithNeighbours(const Log &log, std::size_t place) {
    EventLogEntryRecord record = recordOf(log.entries[place]);
    const std::uint32_t atAnEnd = log.settings.type == Type::linked ? none : SAHPI_NO_MORE_ENTRIES;
    record.prev = numberAt(log, place - 1, atAnEnd); // of 0: past any end
    record.next = numberAt(log, place + 1, atAnEnd);
    return record;
}

std::optional<std::size_t> placeOfId(const Model &model, SaHpiEventLogEntryIdT id) {
    const Log &log = logOf(model);
    if (!model.withFile || log.entries.empty()) {
        return std::nullopt;
    }
    if (id == SAHPI_OLDEST_ENTRY) {
        return 0;
    }
    for (std::size_t place = 0; place < log.entries.size(); ++place) {
        if (log.entries[place].number == id ||
            (id == SAHPI_NEWEST_ENTRY && place + 1 == log.entries.size())) {
            return place;
        }
    }
    return std::nullopt;
}

// A deleted entry of a Linked log is handed out, marked; any other absent one leaves `found` alone.
void compareAbsent(std::string &difference, const Model &model, SaHpiEventLogEntryIdT id,
                   const EventLogEntryRecord &found) {
    const Log &log = logOf(model);
    std::uint32_t after = none; // on the free list
    for (const std::uint32_t deleted : log.toReuse) {
        if (deleted == id && model.withFile) {
            expectEqual(difference, {"mark of deleted entry", id}, found.deleted, 1U);
            expectEqual(difference, {"id of deleted entry", id}, found.entry.EntryId, id);
            expectEqual(difference, {"next of deleted entry", id}, found.next, after);
            return;
        }
        after = deleted;
    }
    EventLogEntryRecord untouched;
    std::memset(&untouched, 0xA5, sizeof untouched);
    expectBytes(difference, {"what is handed out of absent entry", id}, &found, &untouched,
                sizeof found);
}

void compareEntry(std::string &difference, const Model &model, SaHpiEventLogEntryIdT id) {
    EventLogEntryRecord found;
    SaHpiRptEntryT rpt;
    SaHpiRdrT rdr;
    std::memset(&found, 0xA5, sizeof found);
    const SaErrorT result = zuSaHpiEventLogEntryGet(id, &found);
    const SaErrorT rptResult = zuSaHpiEventLogEntRptGet(id, &rpt);
    const SaErrorT rdrResult = zuSaHpiEventLogEntRdrGet(id, &rdr);
    const std::optional<std::size_t> place = placeOfId(model, id);
    if (!place) {
        expectEqual(difference, {"entry", id}, result, SaErrorT{SA_ERR_HPI_NOT_PRESENT});
        expectEqual(difference, {"RPT of entry", id}, rptResult, SaErrorT{SA_ERR_HPI_NOT_PRESENT});
        expectEqual(difference, {"RDR of entry", id}, rdrResult, SaErrorT{SA_ERR_HPI_NOT_PRESENT});
        compareAbsent(difference, model, id, found);
        return;
    }
    const EventLogEntryRecord expected = recordWithNeighbours(logOf(model), *place);
    const std::uint32_t stored = logOf(model).entries[*place].argument;
    expectEqual(difference, {"entry", id}, result, SaErrorT{SA_OK});
    expectEqual(difference, {"prev of entry", id}, found.prev, expected.prev);
    expectEqual(difference, {"next of entry", id}, found.next, expected.next);
    expectBytes(difference, {"entry", id}, &found, &expected, sizeof found);
    const auto presentIf = [stored](std::uint32_t bit) {
        return SaErrorT{(stored & bit) != 0 ? SA_OK : SA_ERR_HPI_NOT_PRESENT};
    };
    expectEqual(difference, {"RPT of entry", id}, rptResult, presentIf(1));
    expectEqual(difference, {"RDR of entry", id}, rdrResult, presentIf(2));
    if (rptResult == SA_OK) {
        expectBytes(difference, {"RPT of entry", id}, &rpt, &expected.rpt, sizeof rpt);
    }
    if (rdrResult == SA_OK) {
        expectBytes(difference, {"RDR of entry", id}, &rdr, &expected.rdr, sizeof rdr);
    }
}

void compareEntries(std::string &difference, const Model &model) {
    const std::uint32_t last = logOf(model).settings.size + 2;
    for (std::uint32_t id = 0; id <= last; ++id) {
        compareEntry(difference, model, id);
    }
    compareEntry(difference, model, SAHPI_NO_MORE_ENTRIES);
    compareEntry(difference, model, SAHPI_NEWEST_ENTRY);
}

std::uint32_t entriesOf(const Log &log) {
    return static_cast<std::uint32_t>(log.entries.size());
}

void compareInfo(std::string &difference, const SaHpiEventLogInfoT &found, const Log &log) {
    const auto byte = [](bool value) { return static_cast<SaHpiBoolT>(value ? 1 : 0); };
    expectEqual(difference, {"Entries"}, found.Entries, entriesOf(log));
    expectEqual(difference, {"Size"}, found.Size, log.settings.size);
    expectEqual(difference, {"UserEventMaxSize"}, found.UserEventMaxSize,
                log.settings.userEventMaxSize);
    expectEqual(difference, {"UpdateTimestamp"}, found.UpdateTimestamp, log.updated);
    expectEqual(difference, {"Enabled"}, found.Enabled, byte(log.enabled));
    expectEqual(difference, {"OverflowFlag"}, found.OverflowFlag, byte(log.overflow));
    expectEqual(difference, {"OverflowResetable"}, found.OverflowResetable,
                byte(log.settings.overflowResetable));
    expectEqual(difference, {"OverflowAction"}, static_cast<std::uint32_t>(found.OverflowAction),
                static_cast<std::uint32_t>(reportedAction(log.settings)));
}

void compareFile(std::string &difference, const std::string &bytes, const Log &log) {
    for (const std::string &sentence : test_support::unsoundness(bytes)) {
        difference += "file: " + sentence + "\n";
    }
    expectEqual(difference, {"file length"}, bytes.size(),
                std::size_t{6064} + std::size_t{log.recordsInFile} * 1496);
    if (!difference.empty()) { // nothing of it can be relied on below
        return;
    }
    EventLogInfoRecord info;
    std::memcpy(&info, bytes.data(), sizeof info);
    compareInfo(difference, info.sa, log);
    const bool empty = log.entries.empty();
    expectEqual(difference, {"type"}, info.type, static_cast<std::uint32_t>(log.settings.type));
    expectEqual(difference, {"overflowAction"}, info.overflowAction,
                static_cast<std::uint32_t>(log.settings.whenFull));
    expectEqual(difference, {"oldest"}, info.oldest, empty ? none : log.entries.front().number);
    expectEqual(difference, {"newest"}, info.newest, empty ? none : log.entries.back().number);
    expectEqual(difference, {"freeHead"}, info.freeHead,
                log.toReuse.empty() ? none : log.toReuse.back());
    expectEqual(difference, {"maxUsed"}, info.maxUsed, highestNumber(log));
    expectEqual(difference, {"timeOffset"}, info.timeOffset, log.offset);
    for (std::size_t place = 0; place < log.entries.size(); ++place) {
        const EventLogEntryRecord expected = log.settings.type == Type::linked
                                                 ? recordWithNeighbours(log, place)
                                                 : recordOf(log.entries[place]);
        const std::size_t offset = 6064 + (std::size_t{expected.entry.EntryId} - 1) * 1496;
        expectBytes(difference, {"file entry", expected.entry.EntryId}, bytes.data() + offset,
                    &expected, sizeof expected);
    }
}

} // namespace

Pair startPair(const std::string &path, const Settings &settings, std::string &difference) {
    test_mainlib::state().timeOfDay = firstMoment;
    test_mainlib::state().diagnostics.clear();
    memory_disk::machine() = {};
    Pair pair{path, firstStart(settings, firstMoment)};
    expectEqual(difference, {"first start"}, startStore(path, settings), SaErrorT{SA_OK});
    if (const std::string printed = takeDiagnostics(); !printed.empty()) {
        difference += "first start prints: " + printed;
    }
    return pair;
}

void tick(Pair &pair) {
    pair.model.now += timeOfAStep;
    test_mainlib::state().timeOfDay = pair.model.now;
}

std::string step(Pair &pair, const Operation &operation) {
    const SaErrorT found = applyToStore(pair, operation);
    const Answer expected = apply(pair.model, operation);
    std::string difference;
    expectEqual(difference, {"result"}, found, expected.result);
    if (const std::string printed = takeDiagnostics(); printed != expected.printed) {
        difference += "the store prints: " + printed + "the model expects: " + expected.printed;
    }
    return difference;
}

std::string compare(const Pair &pair) {
    std::string difference;
    const Log &log = logOf(pair.model);
    SaHpiEventLogInfoT info;
    expectEqual(difference, {"info result"}, zuSaHpiEventLogInfoGet(&info), SaErrorT{SA_OK});
    compareInfo(difference, info, log);
    expectEqual(difference, {"CurrentTime"}, info.CurrentTime, pair.model.now + log.offset);
    expectEqual(difference, {"log time"}, zuSaHpiEventLogTimeGet(), pair.model.now + log.offset);
    expectEqual(difference, {"state"}, zuSaHpiEventLogStateGet() != 0, log.enabled);
    compareEntries(difference, pair.model);
    if (pair.path.starts_with(memory_disk::folder)) {
        compareFile(difference, memory_disk::contents(pair.path), pair.model.inFile);
    } else {
        compareFile(difference, test_support::readFile(pair.path), pair.model.inFile);
    }
    if (const std::string printed = takeDiagnostics(); !printed.empty()) {
        difference += "a read prints: " + printed;
    }
    return difference;
}

std::string compareUnseen(const Pair &pair) {
    const zusahpi::eventlog::StoreState before = zusahpi::eventlog::store;
    std::string difference = compare(pair);
    zusahpi::eventlog::store = before;
    return difference;
}

Moment remember(const Pair &pair) {
    return {zusahpi::eventlog::store, memory_disk::machine(), pair};
}

void goBackTo(const Moment &moment, Pair &pair) {
    zusahpi::eventlog::store = moment.store;
    memory_disk::machine() = moment.machine;
    pair = moment.pair;
    test_mainlib::state().timeOfDay = pair.model.now;
}

bool isStill(const Moment &moment, const Pair &pair) {
    const memory_disk::Machine &machine = memory_disk::machine();
    return pair.model == moment.pair.model && machine.names == moment.machine.names &&
           machine.files == moment.machine.files &&
           std::memcmp(&zusahpi::eventlog::store, &moment.store, sizeof moment.store) == 0;
}

std::string runSequence(const std::string &path, const Settings &settings,
                        std::span<const std::uint32_t> row, bool unseen) {
    std::string difference;
    Pair pair = startPair(path, settings, difference);
    std::size_t done = 0;
    while (difference.empty() && done < row.size()) {
        tick(pair);
        difference = step(pair, decode(row[done]));
        ++done;
        difference += unseen ? compareUnseen(pair) : compare(pair);
    }
    if (difference.empty()) {
        memory_disk::exitProcess();
        return {};
    }
    killStore(pair);
    std::string story = nameOf(settings) + "\n";
    const std::size_t shown = done > 40 ? done - 40 : 0; // the last ones say most
    for (std::size_t i = shown; i < done; ++i) {
        story += std::to_string(i + 1) + ": " + nameOf(decode(row[i])) + "\n";
    }
    return story + difference;
}

void keepDiagnosticsOffTheTerminal() {
    static std::FILE *nowhere = std::fopen("/dev/null", "w");
    stderr = nowhere;
    (void)test_mainlib::state(); // lives until after the handler
    std::atexit([] {             // a start that failed has ended the process
        std::fputs(test_mainlib::state().diagnostics.c_str(), stdout);
    });
}

} // namespace store_model
