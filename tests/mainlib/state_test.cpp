// Goal: the data that the library reads has sensible values from the start, and the root can be
// moved but never to a text that does not fit.
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

#include "zuSaHpi_default_mainlib.h"

extern "C" int useDefaultMainlibFromC(void);

TEST(MainlibState, IsUpFromTheStart) {
    EXPECT_NE(zuSaHpiLibInitialized, 0);
    EXPECT_EQ(zuSaHpiEuId, geteuid());
    EXPECT_EQ(zuSaHpiGroupId, getegid());
    EXPECT_STREQ(zuSaHpiRoot, ".");
}

TEST(MainlibState, RootIsACopy) {
    std::string root = "/var/lib/somewhere";
    EXPECT_EQ(zuSaHpiRootSet(root.c_str()), 0);
    root = "overwritten";
    EXPECT_STREQ(zuSaHpiRoot, "/var/lib/somewhere");
}

TEST(MainlibState, RootMayBeSetToItsOwnTail) {
    ASSERT_EQ(zuSaHpiRootSet("/one/two"), 0);
    EXPECT_EQ(zuSaHpiRootSet(zuSaHpiRoot + 4), 0);
    EXPECT_STREQ(zuSaHpiRoot, "/two");
}

TEST(MainlibState, NullAndEmptyRootAreTheCurrentFolder) {
    ASSERT_EQ(zuSaHpiRootSet("/one"), 0);
    EXPECT_EQ(zuSaHpiRootSet(nullptr), 0);
    EXPECT_STREQ(zuSaHpiRoot, ".");
    ASSERT_EQ(zuSaHpiRootSet("/one"), 0);
    EXPECT_EQ(zuSaHpiRootSet(""), 0);
    EXPECT_STREQ(zuSaHpiRoot, ".");
}

TEST(MainlibState, RootThatIsTooLongChangesNothing) {
    const std::string longest(ZUSAHPI_ROOT_SIZE - 1, 'r');
    EXPECT_EQ(zuSaHpiRootSet(longest.c_str()), 0);
    EXPECT_EQ(zuSaHpiRoot, longest);
    EXPECT_EQ(zuSaHpiRootSet((longest + "r").c_str()), -1);
    EXPECT_EQ(zuSaHpiRoot, longest);
}

TEST(MainlibState, HeaderServesC) {
    EXPECT_EQ(useDefaultMainlibFromC(), 1);
}
