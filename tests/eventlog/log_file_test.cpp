// The store's calls on the log file by themselves.

#include "eventlog/log_file.h"

#include <array>
#include <cerrno>

#include "eventlog/store_state.h"
#include "tests/eventlog/store_fixture.h"

using namespace store_test;
using namespace zusahpi::eventlog;
using test_support::Call;

namespace {

class LogFile : public StoreTest {
  protected:
    LogFile() {
        start(simple, drop, 5);
    }
};

TEST_F(LogFile, WriteWholeContinuesAShortWrite) {
    const std::array<std::byte, 10> bytes{std::byte{1}, std::byte{2}};
    ASSERT_TRUE(seekTo(6064));
    test_support::cutNextWrite(3);
    EXPECT_TRUE(writeWhole(bytes));
    EXPECT_EQ(file().bytes.substr(6064), std::string("\1\2\0\0\0\0\0\0\0\0", 10));
}

TEST_F(LogFile, WriteWholeReportsWhatStoppedAShortWrite) {
    const std::array<std::byte, 10> bytes{};
    ASSERT_TRUE(seekTo(6064));
    test_support::cutNextWrite(3);
    test_support::failCall(Call::write, EDQUOT, 1);
    EXPECT_FALSE(writeWhole(bytes));
    EXPECT_EQ(errno, EDQUOT);
}

TEST_F(LogFile, WriteWholeTakesAWriteOfNothingForAFullDevice) {
    const std::array<std::byte, 10> bytes{};
    test_support::cutNextWrite(0);
    EXPECT_FALSE(writeWhole(bytes));
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(LogFile, TruncateKeepsTheRecordsUpToMaxUsed) {
    EXPECT_TRUE(truncateAfter(3));
    EXPECT_EQ(file().bytes.size(), 6064U + 3 * 1496);
    EXPECT_TRUE(truncateAfter(0));
    EXPECT_EQ(file().bytes.size(), 6064U);
}

TEST_F(LogFile, PositionsPastTwoGigabytesWork) {
    const std::array<std::byte, 1> byte{std::byte{7}};
    ASSERT_TRUE(seekTo(entryOffset(2'000'000)));
    ASSERT_TRUE(writeWhole(byte)); // a sparse file of 2.99 GB
    std::array<std::byte, 2> back{};
    ASSERT_TRUE(seekTo(entryOffset(2'000'000)));
    EXPECT_EQ(readNext(back), 1);
    EXPECT_EQ(back[0], std::byte{7});
    EXPECT_TRUE(truncateAfter(0));
}

} // namespace
