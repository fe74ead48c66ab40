// Goal: without options the log lies where the system wants state to lie, and the built-in
// configuration is a Linked log of 10,000 entries that wraps.
#include "tools/evtlogctl/settings.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tools/evtlogctl/failure.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

using namespace zusahpi::evtlogctl;

TEST(Settings, RootsOfTheSuperuserAndOfUsers) {
    constexpr uid_t superuser = 0;
    constexpr uid_t somebody = 1000;
    setenv("HOME", "/home/jo", 1);
    unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(defaultRoot(superuser), "/var/lib/zusahpi");
    EXPECT_EQ(defaultRoot(somebody), "/home/jo/.local/state/zusahpi");
    setenv("XDG_STATE_HOME", "/state", 1);
    EXPECT_EQ(defaultRoot(superuser), "/var/lib/zusahpi");
    EXPECT_EQ(defaultRoot(somebody), "/state/zusahpi");
    setenv("XDG_STATE_HOME", "state", 1); // relative: does not count
    EXPECT_EQ(defaultRoot(somebody), "/home/jo/.local/state/zusahpi");
    unsetenv("HOME");
    EXPECT_THROW((void)defaultRoot(somebody), Failure);
}

TEST(Settings, BuiltInConfiguration) {
    const LogSetup setup = configure({.configFile = {}, .root = "/some/root"});
    EXPECT_EQ(setup.path, "/some/root/evtlog/evtlog.dat");
    EXPECT_STREQ(zuSaHpiRoot, "/some/root");
    EXPECT_EQ(setup.block->info.type, ZUSAHPI_EL_TYPE_LINKED);
    EXPECT_EQ(setup.block->info.overflowAction, ZUSAHPI_EL_WRAP);
    EXPECT_EQ(setup.block->info.sa.Size, 10'000U);
    EXPECT_EQ(setup.block->fileEnabled, 1U);
    EXPECT_EQ(setup.block->syslogEnabled, 0U);
}

TEST(Settings, NamesThatAreUsedAsTheyStand) {
    const test_support::ScratchFolder folder;
    for (const char *name : {"/var/log/hpi.log", "./hpi.log"}) {
        test_support::inChild([&] {
            const std::string file = folder.file("conf");
            test_support::writeFile(file, std::string("EventLog=linked {\nFilename=\"") + name +
                                              "\"\nSize=5\n}\n");
            EXPECT_EQ(configure({.configFile = file, .root = "/some/root"}).path, name);
        });
    }
}

TEST(Settings, ErrorsOfTheConfiguration) {
    const test_support::ScratchFolder folder;
    const std::string file = folder.file("conf");
    EXPECT_THROW((void)configure({.configFile = file, .root = "/r"}), Failure); // missing
    test_support::writeFile(file, "EventLog=round\n");
    EXPECT_THROW((void)configure({.configFile = file, .root = "/r"}), Failure);
    EXPECT_THROW((void)configure({.configFile = {}, .root = ""}), Failure);
    EXPECT_THROW((void)configure({.configFile = {}, .root = std::string(5000, 'r')}), Failure);
}

TEST(Settings, WhatTheLibraryRefusesComesWithAHint) {
    const test_support::ScratchFolder folder;
    const std::string file = folder.file("conf");
    test_support::writeFile(file, "EventLog=linked {\nFilename=x\n}\n");
    const auto result =
        test_support::runInChild([&] { (void)configure({.configFile = file, .root = "/r"}); });
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.diagnostics, "No Size parameter given for EventLog\n"
                                  "evtlogctl: the configuration " +
                                      file + " was refused, see the line above; correct it\n");
}

TEST(Settings, HintsEndWithTheirBlock) {
    const auto result =
        test_support::runInChild([] { (void)configure({.configFile = {}, .root = "/some/root"}); });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.diagnostics, "");
}

} // namespace
