// Goal: every system call of every operation on a Simple and on a Circular log fails, with every
// error, and the log that is left is the one that the table says.
//
// These logs have no protection against a failure between a record and the info record: where the
// record lies over an entry that still counts, the next start finds the new event in its place.

#include "tests/faults/scenario.h"

using namespace failing_calls;
using namespace store_test;

namespace {

class PlainLog : public FailingCalls {};

TEST_P(PlainLog, EveryCallFails) {
    run(GetParam());
}

const EventLogControlBlock roomySimple = controlBlock(simple, drop, 5);
const EventLogControlBlock fullSimple = controlBlock(simple, drop, 3);
const EventLogControlBlock writingLastSimple = controlBlock(simple, writeLast, 3);
const EventLogControlBlock roomyCircular = controlBlock(circular, wrap, 5);
const EventLogControlBlock wrappingCircular = controlBlock(circular, wrap, 3);
const EventLogControlBlock writingLastCircular = controlBlock(circular, writeLast, 3);
const EventLogControlBlock fullCircular = controlBlock(circular, drop, 3);

const Steps syncing = {{.call = "sync", .message = "", .restart = Restart::after}};

void protect() {
    ASSERT_EQ(zuSaHpiEventLogProtectSet(1), SA_OK);
}

INSTANTIATE_TEST_SUITE_P(AddToSimple, PlainLog,
                         testing::Values(Scenario{.name = "First",
                                                  .block = roomySimple,
                                                  .operation = addNine,
                                                  .steps = plainCommit({1}),
                                                  .after = {9}},
                                         Scenario{.name = "Growing",
                                                  .block = roomySimple,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = addNine,
                                                  .steps = plainCommit({4}),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 3, 9}},
                                         Scenario{.name = "GrowingWhileProtected",
                                                  .block = roomySimple,
                                                  .fill = addAll({1, 2, 3}),
                                                  .prepare = protect,
                                                  .operation = addNine,
                                                  .steps = plainCommit({4}) + syncing,
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 3, 9}},
                                         Scenario{.name = "WritingLast",
                                                  .block = writingLastSimple,
                                                  .fill = addAll({1, 2, 3}),
                                                  .prepare = readAll({3}),
                                                  .operation = addNine,
                                                  .steps = plainCommit({3}, Restart::overwritten),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 9},
                                                  .overwritten = {1, 2, 9}},
                                         Scenario{.name = "WithoutRoom",
                                                  .block = fullSimple,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = addNine,
                                                  .result = SA_ERR_HPI_OUT_OF_SPACE,
                                                  .failure = SA_ERR_HPI_OUT_OF_SPACE,
                                                  .steps = plainCommit({}),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 3},
                                                  .nextAdd = SA_ERR_HPI_OUT_OF_SPACE}),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(AddToCircular, PlainLog,
                         testing::Values(Scenario{.name = "Growing",
                                                  .block = roomyCircular,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = addNine,
                                                  .steps = plainCommit({4}),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 3, 9}},
                                         Scenario{.name = "Wrapping",
                                                  .block = wrappingCircular,
                                                  .fill = addAll({1, 2, 3}),
                                                  .prepare = readAll({1, 2, 3}),
                                                  .operation = addNine,
                                                  .steps = plainCommit({1}, Restart::overwritten),
                                                  .before = {1, 2, 3},
                                                  .after = {2, 3, 9},
                                                  .overwritten = {9, 2, 3}},
                                         Scenario{.name = "WrappingAgain",
                                                  .block = wrappingCircular,
                                                  .fill = addAll({1, 2, 3, 4}),
                                                  .operation = addNine,
                                                  .steps = plainCommit({2}, Restart::overwritten),
                                                  .before = {2, 3, 4},
                                                  .after = {3, 4, 9},
                                                  .overwritten = {9, 3, 4}},
                                         Scenario{.name = "WritingLast",
                                                  .block = writingLastCircular,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = addNine,
                                                  .steps = plainCommit({3}, Restart::overwritten),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 9},
                                                  .overwritten = {1, 2, 9}},
                                         Scenario{.name = "WithoutRoom",
                                                  .block = fullCircular,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = addNine,
                                                  .result = SA_ERR_HPI_OUT_OF_SPACE,
                                                  .failure = SA_ERR_HPI_OUT_OF_SPACE,
                                                  .steps = plainCommit({}),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2, 3},
                                                  .nextAdd = SA_ERR_HPI_OUT_OF_SPACE}),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(Delete, PlainLog,
                         testing::Values(Scenario{.name = "NewestOfSimple",
                                                  .block = roomySimple,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = removing(SAHPI_NEWEST_ENTRY),
                                                  .steps = plainCommit({}),
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2}},
                                         Scenario{.name = "OnlyOfSimple",
                                                  .block = roomySimple,
                                                  .fill = addAll({1}),
                                                  .operation = removing(1),
                                                  .steps = plainCommit({}),
                                                  .before = {1}},
                                         Scenario{.name = "OldestOfCircular",
                                                  .block = roomyCircular,
                                                  .fill = addAll({1, 2, 3}),
                                                  .operation = removing(SAHPI_OLDEST_ENTRY),
                                                  .steps = plainCommit({}),
                                                  .before = {1, 2, 3},
                                                  .after = {2, 3}},
                                         Scenario{.name = "NewestOfWrappedCircular",
                                                  .block = wrappingCircular,
                                                  .fill = addAll({1, 2, 3, 4}),
                                                  .operation = removing(SAHPI_NEWEST_ENTRY),
                                                  .steps = plainCommit({}),
                                                  .before = {2, 3, 4},
                                                  .after = {2, 3}},
                                         Scenario{.name = "NewestWhileProtected",
                                                  .block = roomyCircular,
                                                  .fill = addAll({1, 2, 3}),
                                                  .prepare = protect,
                                                  .operation = removing(3),
                                                  .steps = plainCommit({}) + syncing,
                                                  .before = {1, 2, 3},
                                                  .after = {1, 2}}),
                         nameOf);

EventLogEntryRecord gotRecord;

INSTANTIATE_TEST_SUITE_P(
    Read, PlainLog,
    testing::Values(Scenario{.name = "EntryOfSimple",
                             .block = roomySimple,
                             .fill = addAll({1, 2, 3}),
                             .operation = [] { return zuSaHpiEventLogEntryGet(2, &gotRecord); },
                             .steps = entryRead(2),
                             .before = {1, 2, 3},
                             .after = {1, 2, 3}},
                    Scenario{.name = "EntryOfCircular",
                             .block = wrappingCircular,
                             .fill = addAll({1, 2, 3, 4}),
                             .operation = [] { return zuSaHpiEventLogEntryGet(0, &gotRecord); },
                             .steps = entryRead(2),
                             .before = {2, 3, 4},
                             .after = {2, 3, 4}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    WholeLog, PlainLog,
    testing::Values(Scenario{.name = "ClearSimple",
                             .block = roomySimple,
                             .fill = addAll({1, 2, 3}),
                             .prepare = readAll({1, 2, 3}),
                             .operation = zuSaHpiEventLogClear,
                             .steps = plainCommit({}) + truncateOfClear(),
                             .before = {1, 2, 3}},
                    Scenario{.name = "ClearCircularWhileProtected",
                             .block = wrappingCircular,
                             .fill = addAll({1, 2, 3, 4}),
                             .prepare = protect,
                             .operation = zuSaHpiEventLogClear,
                             .steps = plainCommit({}) + syncing + truncateOfClear(),
                             .before = {2, 3, 4}},
                    Scenario{.name = "ResetOverflowOfSimple",
                             .block = writingLastSimple,
                             .fill = addAll({1, 2, 3, 4}),
                             .operation = zuSaHpiEventLogResetOverflow,
                             .steps = plainCommit({}),
                             .before = {1, 2, 4},
                             .after = {1, 2, 4}},
                    Scenario{.name = "ResetOverflowOfCircular",
                             .block = wrappingCircular,
                             .fill = addAll({1, 2, 3, 4}),
                             .operation = zuSaHpiEventLogResetOverflow,
                             .steps = plainCommit({}),
                             .before = {2, 3, 4},
                             .after = {2, 3, 4}},
                    Scenario{.name = "TimeSet",
                             .block = roomySimple,
                             .fill = addAll({1}),
                             .operation = [] { return zuSaHpiEventLogTimeSet(5); },
                             .failure = SA_OK,
                             .steps = plainCommit({}),
                             .before = {1},
                             .after = {1}},
                    Scenario{.name = "StateSet",
                             .block = roomyCircular,
                             .fill = addAll({1}),
                             .operation = [] { return zuSaHpiEventLogStateSet(0); },
                             .failure = SA_OK,
                             .steps = plainCommit({}),
                             .before = {1},
                             .after = {1}},
                    Scenario{.name = "ProtectSet",
                             .block = roomyCircular,
                             .fill = addAll({1}),
                             .operation = [] { return zuSaHpiEventLogProtectSet(1); },
                             .steps = syncing,
                             .before = {1},
                             .after = {1}}),
    nameOf);

} // namespace
