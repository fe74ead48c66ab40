// Goal: every system call of every operation on a Linked log fails, with every error, and the log
// that the next start finds is the one before or the one after the operation. An operation that
// failed after its transaction became durable is finished by the next change in the same process.

#include "tests/faults/scenario.h"

using namespace failing_calls;
using namespace store_test;

namespace {

class LinkedLog : public FailingCalls {};

TEST_P(LinkedLog, EveryCallFails) {
    run(GetParam());
}

const EventLogControlBlock roomy = controlBlock(linked, wrap, 5);
const EventLogControlBlock wrapping = controlBlock(linked, wrap, 3);
const EventLogControlBlock writingLast = controlBlock(linked, writeLast, 3);
const EventLogControlBlock dropping = controlBlock(linked, drop, 3);

void fillWithoutTwo() {
    addAll({1, 2, 3})();
    ASSERT_EQ(zuSaHpiEventLogEntryDel(2, 0), SA_OK);
}

INSTANTIATE_TEST_SUITE_P(
    Add, LinkedLog,
    testing::Values(Scenario{.name = "First",
                             .block = roomy,
                             .operation = addNine,
                             .steps = linkedCommit({1}),
                             .after = {9}},
                    Scenario{.name = "Growing",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .operation = addNine,
                             .steps = entryRead(3) + linkedCommit({4, 3}),
                             .before = {1, 2, 3},
                             .after = {1, 2, 3, 9}},
                    Scenario{.name = "GrowingWithTheNewestInTheCache",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .prepare = readAll({3}),
                             .operation = addNine,
                             .steps = linkedCommit({4, 3}),
                             .before = {1, 2, 3},
                             .after = {1, 2, 3, 9}},
                    Scenario{.name = "IntoTheFreeList",
                             .block = roomy,
                             .fill = fillWithoutTwo,
                             .operation = addNine,
                             .steps = entryRead(2) + entryRead(3) + linkedCommit({2, 3}),
                             .before = {1, 3},
                             .after = {1, 3, 9}},
                    Scenario{.name = "IntoTheFreeListWithAllInTheCache",
                             .block = roomy,
                             .fill = fillWithoutTwo,
                             .prepare = readAll({1, 2, 3}),
                             .operation = addNine,
                             .steps = linkedCommit({2, 3}),
                             .before = {1, 3},
                             .after = {1, 3, 9}},
                    Scenario{.name = "Wrapping",
                             .block = wrapping,
                             .fill = addAll({1, 2, 3}),
                             .operation = addNine,
                             .steps = entryRead(1) + entryRead(2) + entryRead(3) +
                                      linkedCommit({2, 1, 3}),
                             .before = {1, 2, 3},
                             .after = {2, 3, 9}},
                    Scenario{.name = "WritingLast",
                             .block = writingLast,
                             .fill = addAll({1, 2, 3}),
                             .operation = addNine,
                             .steps = entryRead(3) + entryRead(2) + linkedCommit({2, 3}),
                             .before = {1, 2, 3},
                             .after = {1, 2, 9}},
                    Scenario{.name = "WithoutRoom",
                             .block = dropping,
                             .fill = addAll({1, 2, 3}),
                             .operation = addNine,
                             .result = SA_ERR_HPI_OUT_OF_SPACE,
                             .failure = SA_ERR_HPI_OUT_OF_SPACE,
                             .steps = linkedCommit({}),
                             .before = {1, 2, 3},
                             .after = {1, 2, 3},
                             .nextAdd = SA_ERR_HPI_OUT_OF_SPACE}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Delete, LinkedLog,
    testing::Values(Scenario{.name = "Middle",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .operation = removing(2),
                             .steps = entryRead(2) + entryRead(1) + entryRead(3) +
                                      linkedCommit({1, 3, 2}),
                             .before = {1, 2, 3},
                             .after = {1, 3}},
                    Scenario{.name = "MiddleWithAllInTheCache",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .prepare = readAll({1, 2, 3}),
                             .operation = removing(2),
                             .steps = linkedCommit({1, 3, 2}),
                             .before = {1, 2, 3},
                             .after = {1, 3}},
                    Scenario{.name = "Oldest",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .operation = removing(SAHPI_OLDEST_ENTRY),
                             .steps = entryRead(1) + entryRead(2) + linkedCommit({2, 1}),
                             .before = {1, 2, 3},
                             .after = {2, 3}},
                    Scenario{.name = "Newest",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .operation = removing(SAHPI_NEWEST_ENTRY),
                             .steps = entryRead(3) + entryRead(2) + linkedCommit({2, 3}),
                             .before = {1, 2, 3},
                             .after = {1, 2}},
                    Scenario{.name = "Only",
                             .block = roomy,
                             .fill = addAll({1}),
                             .operation = removing(1),
                             .steps = entryRead(1) + linkedCommit({1}),
                             .before = {1}}),
    nameOf);

EventLogEntryRecord readRecord;
SaHpiRptEntryT readRpt;
SaHpiRdrT readRdr;

INSTANTIATE_TEST_SUITE_P(
    Read, LinkedLog,
    testing::Values(Scenario{.name = "Entry",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .operation = [] { return zuSaHpiEventLogEntryGet(2, &readRecord); },
                             .steps = entryRead(2),
                             .before = {1, 2, 3},
                             .after = {1, 2, 3}},
                    Scenario{.name = "EntryInTheCache",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .prepare = readAll({2}),
                             .operation = [] { return zuSaHpiEventLogEntryGet(2, &readRecord); },
                             .before = {1, 2, 3},
                             .after = {1, 2, 3}},
                    Scenario{.name = "RptEntry",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .operation = [] { return zuSaHpiEventLogEntRptGet(0, &readRpt); },
                             .steps = entryRead(1),
                             .before = {1, 2, 3},
                             .after = {1, 2, 3}},
                    Scenario{
                        .name = "Rdr",
                        .block = roomy,
                        .fill = addAll({1, 2, 3}),
                        .operation = [] { return zuSaHpiEventLogEntRdrGet(0xFFFFFFFF, &readRdr); },
                        .steps = entryRead(3),
                        .before = {1, 2, 3},
                        .after = {1, 2, 3}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    WholeLog, LinkedLog,
    testing::Values(Scenario{.name = "Clear",
                             .block = roomy,
                             .fill = addAll({1, 2, 3}),
                             .prepare = readAll({1, 2, 3}),
                             .operation = zuSaHpiEventLogClear,
                             .steps = linkedCommit({}) + truncateOfClear(),
                             .before = {1, 2, 3}},
                    Scenario{.name = "ResetOverflow",
                             .block = wrapping,
                             .fill = addAll({1, 2, 3, 4}),
                             .operation = zuSaHpiEventLogResetOverflow,
                             .steps = linkedCommit({}),
                             .before = {2, 3, 4},
                             .after = {2, 3, 4}},
                    Scenario{.name = "TimeSet",
                             .block = roomy,
                             .fill = addAll({1}),
                             .operation = [] { return zuSaHpiEventLogTimeSet(5); },
                             .failure = SA_OK,
                             .steps = linkedCommit({}),
                             .before = {1},
                             .after = {1}},
                    Scenario{.name = "StateSet",
                             .block = roomy,
                             .fill = addAll({1}),
                             .operation = [] { return zuSaHpiEventLogStateSet(0); },
                             .failure = SA_OK,
                             .steps = linkedCommit({}),
                             .before = {1},
                             .after = {1}},
                    Scenario{.name = "ProtectSet", // such a log is always written synchronously
                             .block = roomy,
                             .fill = addAll({1}),
                             .operation = [] { return zuSaHpiEventLogProtectSet(1); },
                             .before = {1},
                             .after = {1}}),
    nameOf);

} // namespace
