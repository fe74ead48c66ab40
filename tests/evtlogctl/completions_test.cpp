// Goal: the shell completes sub-commands and the words that may follow them, and nothing else.
#include <gtest/gtest.h>

#include "tools/evtlogctl/line_editor.h"

namespace {

using Words = std::vector<std::string>;
using zusahpi::evtlogctl::completions;

TEST(Completions, FirstWordsAreSubCommands) {
    EXPECT_EQ(completions({}, "").size(), 11U);
    EXPECT_EQ(completions({}, "en"), Words{"entry"});
    EXPECT_EQ(completions({}, "e"), Words{"entry"});
    EXPECT_EQ(completions({}, "x"), Words{});
    EXPECT_EQ(completions({"evtlog"}, "cl"), Words{"clear"});
}

TEST(Completions, SelectorsFollowEntryAndDelete) {
    EXPECT_EQ(completions({"entry"}, ""), (Words{"oldest", "newest"}));
    EXPECT_EQ(completions({"d"}, "n"), Words{"newest"});
    EXPECT_EQ(completions({"evtlog", "delete"}, "o"), Words{"oldest"});
}

TEST(Completions, StatesAndFormsFollowTheirSubCommands) {
    EXPECT_EQ(completions({"state"}, "").size(), 4U);
    EXPECT_EQ(completions({"state"}, "u"), Words{"unprotect"});
    EXPECT_EQ(completions({"print"}, ""), Words{"dump"});
}

TEST(Completions, NothingFollowsAnythingElse) {
    EXPECT_EQ(completions({"info"}, ""), Words{});
    EXPECT_EQ(completions({"entry", "oldest"}, ""), Words{});
    EXPECT_EQ(completions({"evtlog", "entry", "oldest"}, ""), Words{});
    EXPECT_EQ(completions({""}, ""), Words{});
}

} // namespace
