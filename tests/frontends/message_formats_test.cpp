// Goal: the printed table of message formats, and the two sizes that it yields.

#include "frontends/message_formats.h"

#include <climits>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/frontends/sample_log.h"

namespace {

using namespace zusahpi::frontends;

Printed printSizes(const char *prefix, int *genericSize, int *maxSize) {
    return printedBy([&](auto out) {
        zuSaHpiPrintMsgSizes(out, prefix, genericSize, maxSize);
        return 0;
    });
}

TEST(MessageFormats, EveryRow) {
    const Printed printed = printSizes("", nullptr, nullptr);
    EXPECT_EQ(printed.text, sample_log::expectedText("message_sizes.txt"));
    EXPECT_EQ(printed.calls, 35);
}

TEST(MessageFormats, ThePrefixIsPutBeforeEveryName) {
    std::string expected;
    for (char character : "\n" + sample_log::expectedText("message_sizes.txt")) {
        expected += character == '\n' ? "\n %s-" : std::string(1, character);
    }
    expected = expected.substr(1, expected.size() - sizeof "\n %s-" + 1);
    EXPECT_EQ(printSizes(" %s-", nullptr, nullptr).text, expected);
}

TEST(MessageFormats, SizesAreOptional) {
    int genericSize = -1;
    int maxSize = -1;
    EXPECT_EQ(printSizes("", &genericSize, &maxSize).calls, 35);
    EXPECT_EQ(genericSize, 800);
    EXPECT_EQ(maxSize, 744);
    genericSize = maxSize = -1;
    printSizes("", &genericSize, nullptr);
    printSizes("", nullptr, &maxSize);
    EXPECT_EQ(genericSize, 800);
    EXPECT_EQ(maxSize, 744);
}

TEST(MessageFormats, AnEmptyTablePrintsNothing) {
    const FormatName names[] = {{MessageFormat::end, nullptr}};
    const FormatSize sizes[] = {{MessageFormat::end, 0}};
    int genericSize = -1;
    int maxSize = -1;
    const Printed printed = printedBy([&](auto out) {
        printFormats(out, "", names, sizes, &genericSize, &maxSize);
        return 0;
    });
    EXPECT_EQ(printed.text, "");
    EXPECT_EQ(genericSize, -1);
    EXPECT_EQ(maxSize, 0);
}

TEST(MessageFormats, TheMaximumIsSignedAndLeavesOutTheGenericSize) {
    const FormatName names[] = {{MessageFormat::name, "a"},
                                {MessageFormat::generic, "b"},
                                {MessageFormat::parm, "c"},
                                {MessageFormat::end, nullptr}};
    const FormatSize sizes[] = {{MessageFormat::name, -5},
                                {MessageFormat::generic, 900},
                                {MessageFormat::parm, INT_MIN},
                                {MessageFormat::end, 0}};
    int genericSize = -1;
    int maxSize = -1;
    const Printed printed = printedBy([&](auto out) {
        printFormats(out, "> ", names, sizes, &genericSize, &maxSize);
        return 0;
    });
    EXPECT_EQ(printed.text, "> a: -5\n> b: 900\n> c: -2147483648\n");
    EXPECT_EQ(genericSize, 900);
    EXPECT_EQ(maxSize, 0);
}

} // namespace
