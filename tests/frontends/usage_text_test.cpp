// Goal: the usage text, byte by byte, in three prints.

#include "frontends/usage_text.h"

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/frontends/sample_log.h"

namespace {

TEST(UsageText, IsPrintedInThreeParts) {
    const Printed printed = printedBy([](auto out) {
        zusahpi::frontends::printUsage(out);
        return 0;
    });
    EXPECT_EQ(printed.text, sample_log::expectedText("usage.txt"));
    EXPECT_EQ(printed.calls, 3);
}

} // namespace
