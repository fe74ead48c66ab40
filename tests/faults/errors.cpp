// The table of errors, and the count of the calls that failed.

#include "tests/faults/errors.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <stdexcept>

#include <unistd.h>

#include <gtest/gtest.h>

using test_support::Call;

namespace failing_calls {
namespace {

constexpr Error ioError = {EIO, "Input/output error"};
constexpr Error interrupted = {EINTR, "Interrupted system call"};
constexpr Error denied = {EACCES, "Permission denied"};
constexpr Error notPermitted = {EPERM, "Operation not permitted"};
constexpr Error quota = {EDQUOT, "Disk quota exceeded"};
constexpr Error tooManyFiles = {EMFILE, "Too many open files"};
constexpr Error nameTooLong = {ENAMETOOLONG, "File name too long"};

struct CallErrors {
    const char *name;
    Call call;
    std::vector<Error> errors;
};

const std::vector<CallErrors> &table() {
    static const std::vector<CallErrors> instance = {
        {"open", Call::open, {denied, tooManyFiles, ioError, interrupted, noSpace, quota}},
        {"creat", Call::creat, {denied, tooManyFiles, ioError, interrupted, noSpace, quota}},
        {"close", Call::close, {ioError, interrupted, noSpace, quota}},
        {"lseek", Call::lseek, {ioError, interrupted}},
        {"read", Call::read, {ioError, interrupted}},
        {"write", Call::write, {ioError, noSpace, interrupted, quota}},
        {"ftruncate", Call::ftruncate, {ioError, noSpace, interrupted}},
        {"link", Call::link, {denied, ioError, noSpace, quota}},
        {"stat", Call::stat, {denied, ioError}},
        {"fstat", Call::fstat, {ioError}},
        {"unlink", Call::unlink, {denied, ioError}},
        {"fchown", Call::fchown, {notPermitted, ioError, quota, interrupted}},
        {"gethostname", Call::gethostname, {notPermitted, nameTooLong}},
        {"sync", Call::sync, {}},
    };
    return instance;
}

const CallErrors &rowOf(std::string_view line) {
    const std::string_view name = line.substr(0, line.find(' '));
    for (const CallErrors &row : table()) {
        if (name == row.name) {
            return row;
        }
    }
    throw std::logic_error("no such call: " + std::string(line));
}

int failedCalls = 0;
int crashesAfterwards = 0;

struct WholeProgram : testing::Environment {
    // Synchronous writes take a disk's time; thousands of runs need none of its safety.
    void SetUp() override {
        if (access("/dev/shm", W_OK) == 0) {
            setenv("TMPDIR", "/dev/shm", 0);
        }
    }
    void TearDown() override {
        std::printf("figure: failed calls: %d\n", failedCalls);
        std::printf("figure: crashes in the add that follows a failed call: %d\n",
                    crashesAfterwards);
    }
};

// The environment belongs to the test framework from here on.
const testing::Environment *const wholeProgram =
    testing::AddGlobalTestEnvironment(new WholeProgram);

} // namespace

const std::vector<Error> &errorsOf(Call call) {
    for (const CallErrors &row : table()) {
        if (row.call == call) {
            return row.errors;
        }
    }
    throw std::logic_error("a call without errors");
}

Call callOf(std::string_view line) {
    return rowOf(line).call;
}

std::string withText(std::string message, std::string_view text) {
    if (const std::size_t place = message.find("%s"); place != std::string::npos) {
        message.replace(place, 2, text);
    }
    return message;
}

std::size_t openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

void countFailedCall() {
    ++failedCalls;
}

void countCrashAfterwards() {
    ++crashesAfterwards;
}

} // namespace failing_calls
