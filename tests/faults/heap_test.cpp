// Goal: every allocation of the library fails in turn. The index and the syslog map alone allocate;
// the exit handler's registration may.

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

#include "tests/config/config_tree.h"
#include "tests/display/printed.h"
#include "tests/eventlog/store_fixture.h"
#include "tests/faults/errors.h"

using namespace store_test;
using test_support::ChildResult;
using test_support::runInChild;

namespace {

int allocations = 0;
int allocationThatFails = 0; // counted from 1
bool allAllocationsFail = false;
bool registrationFails = false;

bool allocationFails() {
    ++allocations;
    if (allAllocationsFail || allocations == allocationThatFails) {
        errno = ENOMEM;
        return true;
    }
    return false;
}

} // namespace

// In the place of the C library's for all that this program is linked from.
extern "C" {
void *__real_malloc(std::size_t size);
void *__wrap_malloc(std::size_t size);
void *__real_calloc(std::size_t count, std::size_t size);
void *__wrap_calloc(std::size_t count, std::size_t size);
void *__real_realloc(void *memory, std::size_t size);
void *__wrap_realloc(void *memory, std::size_t size);
int __real_atexit(void (*function)());
int __wrap_atexit(void (*function)());

void *__wrap_malloc(std::size_t size) {
    return allocationFails() ? nullptr : __real_malloc(size);
}
void *__wrap_calloc(std::size_t count, std::size_t size) {
    return allocationFails() ? nullptr : __real_calloc(count, size);
}
void *__wrap_realloc(void *memory, std::size_t size) {
    return allocationFails() ? nullptr : __real_realloc(memory, size);
}
int __wrap_atexit(void (*function)()) {
    return registrationFails ? -1 : __real_atexit(function);
}
}

namespace {

constexpr char outOfMemory[] = ": Cannot allocate memory\n";

// The keys, and what is said when there is no memory for the page that each needs.
struct Key {
    std::uint32_t key;
    const char *page; // null where the page is there already
};

const std::vector<Key> keys = {
    {100, "malloc of initial index page"},
    {101, nullptr},
    {5, "malloc of add-on index page"},
    {127, nullptr},
    {70, "malloc of new index page"},
    {0xFFFFFFFF, "malloc of new index page"},
    {31, nullptr},
    {32, "malloc of new index page"},
};

TEST(FailingHeap, EveryPageOfAnIndex) {
    int value = 0;
    int page = 0;
    for (const Key &failing : keys) {
        if (failing.page == nullptr) {
            continue;
        }
        ++page;
        const ChildResult result = runInChild([&] {
            allocationThatFails = allocations + page;
            void *index = nullptr;
            for (const Key &key : keys) {
                index = zuSaHpiIndexAdd(&value, key.key, index);
            }
        });
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.diagnostics, std::string(failing.page) + outOfMemory);
        failing_calls::countFailedCall();
    }
    EXPECT_EQ(page, 5);
}

TEST(FailingHeap, OnlyTheAddsOfAnIndexNeedMemory) {
    int value = 0;
    void *index = nullptr;
    const int before = allocations;
    for (const Key &key : keys) {
        index = zuSaHpiIndexAdd(&value, key.key, index);
    }
    EXPECT_EQ(allocations - before, 5);
    allAllocationsFail = true;
    EXPECT_EQ(zuSaHpiIndexGet(5, index), &value);
    EXPECT_EQ(zuSaHpiIndexGetNext(6, index), &value);
    EXPECT_EQ(zuSaHpiIndexGetPrev(99, index), &value);
    zuSaHpiIndexDel(5, index);
    EXPECT_EQ(zuSaHpiIndexAdd(&value, 6, index), index);
    EXPECT_EQ(zuSaHpiIndexFree(index), nullptr);
    allAllocationsFail = false;
    EXPECT_EQ(allocations - before, 5);
}

TEST(FailingHeap, EveryEntryOfTheSyslogMap) {
    using namespace config_tree;
    const Tree tree(linkedLog(
        {syslog({eventType(SAHPI_ET_SENSOR, {}), allEventTypes({}),
                 eventType(SAHPI_ET_USER, {allSeverities(3)}), eventType(SAHPI_ET_OEM, {})})}));
    for (int entry = 1; entry <= 3; ++entry) {
        const ChildResult result = runInChild([&] {
            allocationThatFails = allocations + entry;
            zuSaHpiEvtLogConf(tree.first());
        });
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.diagnostics, std::string("Unable to malloc syslog map") + outOfMemory);
        failing_calls::countFailedCall();
    }
    const int before = allocations;
    zuSaHpiEvtLogConf(tree.first());
    EXPECT_EQ(allocations - before, 3);
}

class WithoutHeap : public StoreTest {};

// A session of the store and its front ends, forwarding included, with no memory to be had.
void runWithoutHeap() {
    EventLogControlBlock block = controlBlock(linked, wrap, 3);
    block.syslogEnabled = 1;
    const int before = allocations;
    allAllocationsFail = true;
    const SaErrorT started = zuSaHpiEventLogInit(&block);
    SaErrorT added = SA_OK;
    for (std::uint8_t seed = 1; seed <= 4 && added == SA_OK; ++seed) {
        const EventLogAddRecord record = event(seed);
        added = zuSaHpiEventLogEntryAdd(&record, 0);
    }
    EventLogEntryRecord record;
    const SaErrorT got = zuSaHpiEventLogEntryGet(SAHPI_NEWEST_ENTRY, &record);
    const Printed printed = printedBy([](auto out) { return zuSaHpiDumplog(out, "log", 0); });
    const Printed dumped = printedBy([](auto out) { return zuSaHpiPrintEventLog(out, 1); });
    const SaErrorT removed = zuSaHpiEventLogEntryDel(SAHPI_OLDEST_ENTRY, 0);
    const SaErrorT cleared = zuSaHpiEventLogClear();
    allAllocationsFail = false;
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(started, SA_OK);
    EXPECT_EQ(added, SA_OK);
    EXPECT_EQ(got, SA_OK);
    EXPECT_EQ(record.rpt.ResourceTag.Data[0], 4);
    EXPECT_NE(printed.text, "");
    EXPECT_NE(dumped.text, "");
    EXPECT_EQ(removed, SA_OK);
    EXPECT_EQ(cleared, SA_OK);
}

TEST_F(WithoutHeap, TheStoreNeedsNone) {
    test_support::inChild(runWithoutHeap);
}

// As when the process is killed: the log is whole, its lock stays behind.
TEST_F(WithoutHeap, AnExitHandlerThatCannotBeRegistered) {
    unlink(logPath().c_str());
    const ChildResult result = runInChild([] {
        registrationFails = true;
        start(linked, wrap, 3);
        registrationFails = false;
        add(1);
    });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.diagnostics, "");
    EXPECT_TRUE(test_support::exists(lockPath()));
    EXPECT_EQ(unlink(lockPath().c_str()), 0);
    test_support::inChild([] {
        start(linked, wrap, 3);
        EXPECT_EQ(seeds(), std::vector<int>{1});
    });
    failing_calls::countFailedCall();
}

} // namespace
