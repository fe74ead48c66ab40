// One operation of the store on one log, with every system call that it makes, in order, and what
// the failure of each comes to. The runner makes each of them fail in turn, with every error, once
// and from then on, and holds the outcome against the table.
//
// What each run checks, beyond the columns of the table:
//   1. No transaction is open and its cache is empty; no descriptor was opened or closed.
//   2. The file holds, byte for byte, what the calls before the failed one wrote.
//   3. Every entry that the store returns is the record that the file holds: neither cache shows
//      anything else.
//   4. The lock is held until the process ends, and gone afterwards.
//   5. Once the failure has passed the next add works, and the log holds what it should.
//   6. A crash at any call of that next add to a Linked log leaves the log before or after it.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/eventlog/store_fixture.h"

namespace failing_calls {

// The in-memory info record after the failure.
enum class Memory {
    before,  // as before the operation
    flagged, // the same with `updating` set
    after,   // as after the operation
};

// The entries that the next start finds in the file.
enum class Restart { before, after, overwritten };

// What a call that moves fewer bytes than asked for comes to.
enum class Short { none, isContinued, goesUnnoticed, isReported };

struct Step {
    std::string call;    // as recorded, such as "lseek 80"
    std::string message; // printed; "%s" stands for the system's text of the error
    Memory memory = Memory::before;
    Restart restart = Restart::before;
    Short shortOne = Short::none;
    std::string shortMessage = {}; // with "%d" in the place of the number of bytes
};

using Steps = std::vector<Step>;

// The read of an entry that is in no cache.
[[nodiscard]] Steps entryRead(std::uint32_t number);

// The commit of a Linked log that changes these entries, in this order.
[[nodiscard]] Steps linkedCommit(const std::vector<std::uint32_t> &entries);

// The commit of a Simple or Circular log that changes these entries. `restart` is what the next
// start finds when the entries were written but not the info record.
[[nodiscard]] Steps plainCommit(const std::vector<std::uint32_t> &entries,
                                Restart restart = Restart::before);

// What a clear does last.
[[nodiscard]] Steps truncateOfClear();

[[nodiscard]] Steps operator+(Steps steps, const Steps &more);

struct Scenario {
    const char *name;
    EventLogControlBlock block;
    std::function<void()> fill = [] {};    // makes the log, in a process of its own
    std::function<void()> prepare = [] {}; // done first in the process of the operation
    std::function<SaErrorT()> operation;
    SaErrorT result = SA_OK;                   // when no call fails
    SaErrorT failure = SA_ERR_HPI_NO_RESPONSE; // when one does
    Steps steps = {};
    std::vector<int> before = {};      // seeds of the entries before the operation
    std::vector<int> after = {};       // and after it
    std::vector<int> overwritten = {}; // of Restart::overwritten
    SaErrorT nextAdd = SA_OK;          // what an add returns after the operation
};

// How a test with a scenario for its parameter is listed.
void PrintTo(const Scenario &scenario, std::ostream *out);
std::string nameOf(const testing::TestParamInfo<Scenario> &info);

class FailingCalls : public store_test::StoreTest, public testing::WithParamInterface<Scenario> {
  protected:
    static void run(const Scenario &scenario);
};

// Adds event(seed), also to a log that is disabled.
SaErrorT forcedAdd(std::uint8_t seed);
SaErrorT addNine(); // event(9)

std::function<SaErrorT()> removing(SaHpiEventLogEntryIdT entryId);

// Adds event(seed) for each seed; each must succeed.
std::function<void()> addAll(std::vector<std::uint8_t> seeds);

// Reads entries, so that they are in the read cache.
std::function<void()> readAll(std::vector<std::uint32_t> numbers);

// The seeds of the entries of a log file, by its info record and the records alone.
std::vector<int> seedsIn(const store_test::FileImage &file);

} // namespace failing_calls
