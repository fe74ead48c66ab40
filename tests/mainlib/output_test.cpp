// Goal: every stream of C is a channel, any length comes out whole, and the result is printf's.
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "zuSaHpi_mainlib.h"

namespace {

zuSaHpiHandleT handleOf(FILE *stream) {
    return reinterpret_cast<zuSaHpiHandleT>(stream);
}

} // namespace

TEST(Output, GoesToTheStreamOfTheHandle) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("out");
    FILE *const stream = std::fopen(path.c_str(), "w");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(zuSaHpiPrintf(handleOf(stream), "%s %u|", "text with %s", 4294967295U), 24);
    EXPECT_EQ(zuSaHpiPrintf(handleOf(stream), "%s", ""), 0);
    EXPECT_EQ(zuSaHpiPrintf(handleOf(stream), "%lld\n", -9223372036854775807LL), 21);
    ASSERT_EQ(std::fclose(stream), 0);
    EXPECT_EQ(test_support::readFile(path), "text with %s 4294967295|-9223372036854775807\n");
}

TEST(Output, HasNoLimitOfLength) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("out");
    FILE *const stream = std::fopen(path.c_str(), "w");
    ASSERT_NE(stream, nullptr);
    const std::string text(3'000'000, 'x');
    EXPECT_EQ(zuSaHpiPrintf(handleOf(stream), "<%s>", text.c_str()), 3'000'002);
    ASSERT_EQ(std::fclose(stream), 0);
    EXPECT_EQ(test_support::readFile(path), "<" + text + ">");
}

TEST(Output, StandardErrorIsAChannel) {
    const test_support::ChildResult child = test_support::runInChild(
        [] { EXPECT_EQ(zuSaHpiPrintf(handleOf(stderr), "%d items\n", 3), 8); });
    EXPECT_EQ(child.exitStatus, 0);
    EXPECT_EQ(child.diagnostics, "3 items\n");
}

TEST(Output, FailureIsReported) {
    EXPECT_LT(zuSaHpiPrintf(0, "%s", "text"), 0);
    FILE *const stream = std::fopen("/dev/full", "w");
    ASSERT_NE(stream, nullptr);
    std::setvbuf(stream, nullptr, _IONBF, 0);
    EXPECT_LT(zuSaHpiPrintf(handleOf(stream), "%s", "text"), 0);
    std::fclose(stream);
}
