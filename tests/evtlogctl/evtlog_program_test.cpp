// Goal: the commands that hand the log to the library's own evtlog command and printers: evtlog,
// shell (through pipe and terminal), print, dump and the verbose list.
#include <algorithm>

#include <gtest/gtest.h>

#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"

namespace {

using program::Result;
using sel_samples::dataFile;
using sel_samples::exampleFile;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

class EvtlogProgram : public testing::Test {
  protected:
    EvtlogProgram() {
        writeFile(config, "EventLog=circular { Filename=log Size=1000 }\n");
    }
    Result run(std::vector<std::string> arguments, const std::string &input = "") {
        return program::run(withLog(std::move(arguments)), input);
    }
    std::vector<std::string> withLog(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--root", root, "--config", config});
        return arguments;
    }
    std::string logFile() {
        return root + "/evtlog/log";
    }
    void importSamples() {
        EXPECT_EQ(run({"import", exampleFile("server.sel")}).exitStatus, 0);
    }

    ScratchFolder folder;
    std::string root = folder.file("root");
    std::string config = folder.file("config");
};

std::size_t count(const std::string &text, const std::string &word) {
    std::size_t found = 0;
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) {
        ++found;
    }
    return found;
}

TEST_F(EvtlogProgram, EvtlogRunsOneLine) {
    Result result = run({"evtlog", "add", "'", "two", "words"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "Event Log returned SA_OK\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_FALSE(exists(logFile() + ".lck"));
    result = run({"evtlog", "e", "newest"});
    EXPECT_EQ(count(result.output, "\" two words\"\n"), 1U) << result.output;
    EXPECT_EQ(run({"evtlog", "d", "7"}).output, "Event Log error: SA_ERR_HPI_NOT_PRESENT\n");
    EXPECT_EQ(run({"evtlog", "d", "-7"}).output, "Event Log error: SA_ERR_HPI_NOT_PRESENT\n");
}

TEST_F(EvtlogProgram, WordsInBracketsStayAsTheyAre) {
    EXPECT_EQ(run({"evtlog", "add", "'", "[::1]", "[a,b]", "[]"}).output,
              "Event Log returned SA_OK\n");
    const Result result = run({"evtlog", "e", "newest"});
    EXPECT_EQ(count(result.output, "\" [::1] [a,b] []\"\n"), 1U) << result.output;
}

TEST_F(EvtlogProgram, EvtlogTakesBinaryDataAndTimes) {
    EXPECT_EQ(run({"evtlog", "a", "/0102"}).output, "Event Log returned SA_OK\n");
    EXPECT_EQ(run({"evtlog", "t", "2030-01-01", "12:00"}).output, "Event Log returned SA_OK\n");
    EXPECT_EQ(run({"evtlog", "t", "nonsense"}).output, "Time conversion error: Illegal field\n");
    EXPECT_EQ(count(run({"evtlog", "i"}).output, "CurrentTime          2030-01-01T12:00:0"), 1U);
}

TEST_F(EvtlogProgram, EvtlogWithoutWordsPrintsItsUsage) {
    const Result result = run({"evtlog"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_TRUE(result.output.starts_with("Usage: evtlog <subcmd>\n"));
}

TEST_F(EvtlogProgram, ShellRunsPipedLinesWithoutAPrompt) {
    const Result result = run({"shell"}, "add one\n\n  \nevtlog add two\nd oldest\nquit\nclear\n");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "Event Log returned SA_OK\n"
                             "Event Log returned SA_OK\n"
                             "Event Log returned SA_OK\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_FALSE(exists(logFile() + ".lck"));
    EXPECT_EQ(count(run({"list"}).output, "\n"), 1U); // the clear behind quit was not run
}

TEST_F(EvtlogProgram, ShellEndsWithItsInput) {
    EXPECT_EQ(run({"shell"}, "add one").output, "Event Log returned SA_OK\n");
    EXPECT_EQ(run({"shell"}, "").output, "");
}

TEST_F(EvtlogProgram, ShellHelps) {
    const Result result = run({"shell"}, "help\n");
    EXPECT_EQ(count(result.output, "Usage: evtlog <subcmd>\n"), 1U);
    EXPECT_EQ(count(result.output, "\"quit\""), 1U);
}

TEST_F(EvtlogProgram, ShellTalksOnATerminal) {
    const std::vector<std::string> shell = withLog({"shell"});
    Result result = program::talkOnTerminal(shell, {{"evtlog> ", "add hello\r"},
                                                    {"Event Log returned SA_OK", "entry newest\r"},
                                                    {"\"hello\"", "quit\r"}});
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(count(result.output, "Event Entry:"), 1U) << result.output;
    EXPECT_FALSE(exists(logFile() + ".lck"));

    result = program::talkOnTerminal(shell, {{"evtlog> ", "\x04"}}); // end of file
    EXPECT_EQ(result.exitStatus, 0) << result.output;
#if defined(EVTLOGCTL_EDITS_LINES)
    // Completed: "en" to "entry", "n" to "newest"; and the line before it comes from the history.
    result = program::talkOnTerminal(shell, {{"evtlog> ", "en\t n\t\r"}, {"\"hello\"", "quit\r"}});
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(count(readFile(root + "/evtlogctl_history"), "hello"), 1U);
    result = program::talkOnTerminal(shell, {{"evtlog> ", "\x10\x10\r"}, // two lines back
                                             {"\"hello\"", "quit\r"}});
    EXPECT_EQ(result.exitStatus, 0) << result.output;
#endif
}

TEST_F(EvtlogProgram, PrintShowsEveryEntry) {
    importSamples();
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"print"}, {"print", logFile()}}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_TRUE(
            result.output.starts_with("Event Log Info:\n     sa.Entries              234\n"));
        EXPECT_EQ(count("\n" + result.output, "\nEntry "), 234U);
        EXPECT_EQ(count(result.output, "      RDR:\n"), count(result.output, "      RPT Entry:\n"));
    }
}

TEST_F(EvtlogProgram, DumpShowsTheRecordsInHex) {
    importSamples();
    const Result result = run({"dump", logFile()});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_TRUE(result.output.starts_with("0000: ea000000 e8030000 ff000000 00000000 |"))
        << result.output.substr(0, 100);
    EXPECT_EQ(count("\n" + result.output, "\nEntry "), 234U);
}

TEST_F(EvtlogProgram, PrintAndDumpRefuseWhatIsNoLog) {
    const std::string file = folder.file("short");
    writeFile(file, std::string(100, 'x'));
    for (const char *command : {"print", "dump"}) {
        Result result = run({command, file});
        EXPECT_EQ(result.exitStatus, 3);
        EXPECT_EQ(result.errors, "evtlogctl: " + file +
                                     " is no log: it is shorter than an empty log, or no regular "
                                     "file; name an event log file\n");
        result = run({command, folder.file("missing")});
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.output, "");
        result = run({command, "/dev/zero"});
        EXPECT_EQ(result.exitStatus, 3);
    }
}

TEST_F(EvtlogProgram, VerboseListShowsEntriesInFull) {
    EXPECT_EQ(run({"import", dataFile("labelled-bytes.txt")}).exitStatus, 0);
    const Result result = run({"list", "-o", "verbose"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(count("\n" + result.output, "\nEntryId: "), 2U);
    EXPECT_EQ(count(result.output, "\nRPT Entry:\n      EntryId = 0\n"), 2U);
    EXPECT_EQ(count(result.output, "\nRDR:\n      RDR Record # 31\n"), 1U);
    EXPECT_EQ(count(run({"list", "-o", "short"}).output, "\n"), 2U);
    EXPECT_EQ(run({"list", "-o", "xml"}).exitStatus, 2);
}

} // namespace
