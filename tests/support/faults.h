// Watches the system calls that the code under test makes, and makes chosen ones fail. The calls
// are caught at the C library's border; nothing in the code under test takes part.
#pragma once

#include <string>
#include <vector>

namespace test_support {

enum class Call {
    open,
    creat,
    close,
    lseek,
    read,
    write,
    ftruncate,
    link,
    stat,
    fstat,
    unlink,
    fchown,
    gethostname,
    sync,
    count
};

// Makes the call after the next `skip` ones of its kind fail with an error number, once.
void failCall(Call call, int errorNumber, int skip = 0);

// The same for every call from then on, until the end of the process.
void failCallsFrom(Call call, int errorNumber, int skip = 0);

// Makes the next link answer the wrong way: failure for a link that it made, or success for one
// that it did not make.
enum class LinkLie { failureWhenMade, successWhenNotMade };
void makeNextLinkLie(LinkLie lie);

// Makes the call after the next `skip` ones of its kind, a read or a write, move at most `bytes`
// bytes.
void cutCall(Call call, std::size_t bytes, int skip = 0);
void cutNextWrite(std::size_t bytes);

// Lets every call pass again.
void clearFaults();

// Ends the process, without its exit handlers, in place of the call after the next `skip` ones of
// any kind: what it leaves behind is what that many calls did.
void endProcessBeforeCall(int skip);
inline constexpr int endedByFault = 42;

// Lets the calls after the next `skip` ones of any kind reach no file, whatever they answer: what
// is left is what a process leaves that ended there.
void loseCallsFrom(int skip);
bool callsWereLost();

// What gethostname and getpid answer from then on.
void pretendHost(const std::string &name);
void pretendProcessId(int id);

// Starts a record of the calls; recordedCalls ends it and returns lines such as "lseek 80",
// "write 1496", "ftruncate 6064", "sync".
void recordCalls();
std::vector<std::string> recordedCalls();

} // namespace test_support
