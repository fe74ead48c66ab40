// Sessions of the store on files that a test has put there.

#include "tests/crash/session.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "eventlog/store_state.h"
#include "tests/support/files.h"
#include "tests/support/test_mainlib.h"

namespace crash_test {
namespace {

using store_test::none;
using zusahpi::eventlog::store;
using zusahpi::eventlog::StoreState;

constexpr std::size_t infoLength = 80;
constexpr std::size_t linksLength = 16; // deleted, prev, next and a reserved word

test_support::ScratchFolder scratchFolder() {
    constexpr char inMemory[] = "/dev/shm";
    if (access(inMemory, W_OK) == 0) {
        setenv("TMPDIR", inMemory, 0);
    }
    return {};
}

const pid_t firstProcess = getpid();

bool running = false;

void nameTheSessionThatEndedTheProcess() {
    if (running) {
        std::fprintf(stderr, "the process ended on: %s\n", sessionName.c_str());
    }
}

template <typename Record>
bool same(const Record &a, const Record &b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::vector<EventLogEntryRecord> walk(SaHpiEventLogEntryIdT from,
                                      std::uint32_t EventLogEntryRecord::*onwards) {
    constexpr std::size_t farTooMany = 100; // no test has a larger log: the chain is a circle
    std::vector<EventLogEntryRecord> found;
    EventLogEntryRecord record;
    while (found.size() < farTooMany && zuSaHpiEventLogEntryGet(from, &record) == SA_OK) {
        found.push_back(record);
        from = record.*onwards;
        if (from >= SAHPI_NO_MORE_ENTRIES) {
            break;
        }
    }
    return found;
}

std::string firstByteThatDiffers(const std::string &what, std::string_view a, std::string_view b) {
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return what + " differs at byte " + std::to_string(left - a.begin()) + " (lengths " +
           std::to_string(a.size()) + " and " + std::to_string(b.size()) + ")";
}

bool sameRecords(const std::vector<EventLogEntryRecord> &a,
                 const std::vector<EventLogEntryRecord> &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same<EventLogEntryRecord>);
}

} // namespace

std::string sessionName;

const std::string &rootFolder() {
    static const test_support::ScratchFolder folder = scratchFolder();
    static const bool made = mkdir(folder.file("evtlog").c_str(), 0777) == 0;
    EXPECT_TRUE(made);
    return folder.path();
}

const std::string &logPath() {
    static const std::string path = rootFolder() + "/evtlog/log";
    return path;
}

const std::string &lockPath() {
    static const std::string path = logPath() + ".lck";
    return path;
}

void removeLog() {
    unlink(logPath().c_str());
    unlink(lockPath().c_str());
}

void startLog(const EventLogControlBlock &block) {
    zuSaHpiRoot = rootFolder().c_str();
    EventLogControlBlock copy = block;
    EXPECT_EQ(zuSaHpiEventLogInit(&copy), SA_OK); // failures end the process
}

void beginSession(const EventLogControlBlock &block) {
    static const int registered = std::atexit(nameTheSessionThatEndedTheProcess);
    EXPECT_EQ(registered, 0);
    store = StoreState{};
    test_mainlib::state().diagnostics.clear();
    running = true;
    startLog(block);
    running = false;
}

void endSession() {
    close(store.fd);
    unlink(lockPath().c_str());
    store = StoreState{};
}

std::string_view infoOf(const LogState &state) {
    return std::string_view(state.file).substr(0, infoLength);
}

std::string_view recordsOf(const LogState &state) {
    const std::string_view file = state.file;
    return file.substr(std::min(file.size(), entriesStart));
}

bool operator==(const LogState &a, const LogState &b) {
    return infoOf(a) == infoOf(b) && recordsOf(a) == recordsOf(b) && same(a.reported, b.reported) &&
           a.enabled == b.enabled && sameRecords(a.entries, b.entries) &&
           sameRecords(a.backwards, b.backwards) && a.messages == b.messages;
}

std::string difference(const LogState &a, const LogState &b) {
    if (infoOf(a) != infoOf(b)) {
        return firstByteThatDiffers("the info record", infoOf(a), infoOf(b));
    }
    if (recordsOf(a) != recordsOf(b)) {
        return firstByteThatDiffers("the entry area", recordsOf(a), recordsOf(b));
    }
    if (a.messages != b.messages) {
        return "printed \"" + a.messages + "\" instead of \"" + b.messages + "\"";
    }
    return a == b ? "nothing differs" : "what the functions return differs";
}

LogState logState() {
    LogState state;
    state.file = test_support::readFile(logPath());
    (void)zuSaHpiEventLogInfoGet(&state.reported);
    state.enabled = zuSaHpiEventLogStateGet();
    state.entries = walk(SAHPI_OLDEST_ENTRY, &EventLogEntryRecord::next);
    state.backwards = walk(SAHPI_NEWEST_ENTRY, &EventLogEntryRecord::prev);
    state.messages = test_mainlib::state().diagnostics;
    return state;
}

LogState stateAfterStart(const EventLogControlBlock &block, const std::string &bytes) {
    test_support::writeFile(logPath(), bytes);
    beginSession(block);
    LogState state = logState();
    endSession();
    return state;
}

SaHpiTimeT timeOf(std::uint8_t seed) {
    return 1'000'000'000 + SaHpiTimeT{seed} * 1000;
}

SaErrorT addEvent(std::uint8_t seed) {
    test_mainlib::state().timeOfDay = timeOf(seed);
    const EventLogAddRecord added = store_test::event(seed);
    return zuSaHpiEventLogEntryAdd(&added, 0);
}

std::string unlikeSeeds(const LogState &state, const std::vector<int> &seeds) {
    std::vector<EventLogEntryRecord> backwards = state.backwards;
    std::reverse(backwards.begin(), backwards.end());
    if (!sameRecords(state.entries, backwards)) {
        return "the entries are others from newest to oldest";
    }
    if (state.entries.size() != seeds.size() || state.reported.Entries != seeds.size()) {
        return std::to_string(state.entries.size()) + " entries, " +
               std::to_string(state.reported.Entries) + " by the info, instead of " +
               std::to_string(seeds.size());
    }
    for (std::size_t i = 0; i < seeds.size(); ++i) {
        const EventLogEntryRecord &found = state.entries[i];
        const std::uint8_t seed = static_cast<std::uint8_t>(seeds[i]);
        EventLogEntryRecord expected = store_test::entryRecord(found.entry.EntryId, seed);
        expected.entry.Timestamp = timeOf(seed);
        if (!store_test::equalBytes(&found.entry, &expected.entry, sizeof found - linksLength)) {
            return "entry " + std::to_string(found.entry.EntryId) + " is not event " +
                   std::to_string(seeds[i]);
        }
    }
    return "";
}

bool longTests() {
    const char *value = std::getenv("ZUSAHPI_LONG_TESTS");
    return value != nullptr && std::strcmp(value, "1") == 0;
}

} // namespace crash_test

// Asked by the leak sanitizer where there is one. It looks through the test itself; at the end of
// each of the thousands of children that tests fork it would take a tenth of a second.
extern "C" int __lsan_is_turned_off();
int __lsan_is_turned_off() {
    return getpid() != crash_test::firstProcess ? 1 : 0;
}
