// Goal: evtlogctl report writes one whole page that needs nothing else, in the place of an older
// one; nothing that a log holds gets out of the data into the page. What the page does with its
// data is tested in a browser.
#include <filesystem>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "eventlog/log_format.h"
#include "tests/evtlogctl/program.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/support/files.h"

namespace {

using program::Result;
using rapidjson::Document;
using sample_logs::Kind;
using sample_logs::put;
using test_support::exists;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

const std::string dataBegin = R"(<script type="application/json" id="data">)";

// The piece of a page that is its data.
std::string dataOf(const std::string &page) {
    const std::size_t begin = page.find(dataBegin) + dataBegin.size();
    return page.substr(begin, page.find("</script>", begin) - begin);
}

Document parsed(const std::string &page) {
    Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>(dataOf(page).c_str());
    EXPECT_FALSE(document.HasParseError()) << dataOf(page);
    return document;
}

// All but the data and the moment of its making are always the same.
std::string frameOf(const std::string &page) {
    std::string frame = page;
    return frame.replace(frame.find(dataOf(page)), dataOf(page).size(), "");
}

class Report : public testing::Test {
  protected:
    Report() {
        writeFile(log, sample_logs::bytesOf(Kind::simple));
    }
    std::string written(const std::vector<std::string> &options = {}, int status = 0) {
        std::vector<std::string> arguments = {"report", "-o", "-", log};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Result result = program::run(arguments);
        EXPECT_EQ(result.exitStatus, status);
        EXPECT_EQ(result.errors.empty(), status == 0);
        return result.output;
    }
    // Nothing is left behind beside the files that are named.
    void expectFiles(const std::set<std::string> &expected) {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
            names.insert(entry.path().filename().string());
        }
        EXPECT_EQ(names, expected);
    }

    ScratchFolder folder;
    std::string log = folder.file("log");
    std::string page = folder.file("page.html");
};

TEST_F(Report, APageIsWrittenWithoutAWord) {
    const Result result = program::run({"report", "-o", page, log});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    EXPECT_TRUE(readFile(page).starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(readFile(page).ends_with("</html>\n"));
    EXPECT_EQ(frameOf(readFile(page)), frameOf(written()));
    expectFiles({"log", "page.html"});
}

TEST_F(Report, TheDataOfThePage) {
    const Document data = parsed(written());
    EXPECT_EQ(data["Stat"]["Counted"].GetUint(), 3U);
    EXPECT_EQ(data["RowsLeftOut"].GetUint(), 0U);
    EXPECT_EQ(data["Notices"].Size(), 0U);
    ASSERT_EQ(data["Rows"].Size(), 3U);
    const auto &row = data["Rows"][2];
    EXPECT_EQ(row[0].GetUint(), 3U);
    EXPECT_EQ(row[1].GetInt64(), 1'700'000'000'000);
    EXPECT_EQ(row[2].GetUint(), static_cast<unsigned>(SAHPI_MINOR));
    EXPECT_STREQ(row[3].GetString(), "Shelf");
    EXPECT_STREQ(row[4].GetString(), "Fan speed: Lower Major asserted, reading 1200, "
                                     "threshold 1500");
    ASSERT_EQ(data["Timeline"]["Counts"].Size(), 1U);
    EXPECT_EQ(data["Timeline"]["Counts"][0][2].GetUint(), 3U); // minor
}

TEST_F(Report, TheNewestEntriesAlone) {
    const Document data = parsed(written({"-n", "2"}));
    ASSERT_EQ(data["Rows"].Size(), 2U);
    EXPECT_EQ(data["Rows"][0][0].GetUint(), 2U);
    EXPECT_EQ(data["RowsLeftOut"].GetUint(), 1U);
    EXPECT_EQ(data["Stat"]["Counted"].GetUint(), 3U);
    EXPECT_EQ(data["Timeline"]["Counts"][0][2].GetUint(), 3U);
    EXPECT_EQ(parsed(written({"--newest=0"}))["Rows"].Size(), 0U);
}

TEST_F(Report, TimesThatAreNoTimeOfDay) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    put(bytes, IN_ENTRY(1, entry.Event.Timestamp), SAHPI_TIME_UNSPECIFIED);
    put(bytes, IN_ENTRY(1, entry.Timestamp), SaHpiTimeT{1'650'000'000'000'000'000});
    put(bytes, IN_ENTRY(2, entry.Event.Timestamp), SaHpiTimeT{42'000'000'000});
    put(bytes, IN_ENTRY(3, entry.Event.Timestamp), SaHpiTimeT{43'000'000'000});
    writeFile(log, bytes);
    const Document data = parsed(written());
    EXPECT_EQ(data["Rows"][0][1].GetInt64(), 1'650'000'000'000);
    EXPECT_STREQ(data["Rows"][0][4].GetString(), "User: fan 3 replaced (time of logging)");
    EXPECT_STREQ(data["Rows"][1][1].GetString(), "+0d00:00:42");
    EXPECT_EQ(data["Timeline"]["Counts"].Size(), 0U);
}

// A page fetches nothing, and no script but its own runs.
TEST_F(Report, ThePageNamesNothingOutsideItself) {
    std::string frame = frameOf(written());
    const std::string drawings = "\"http://www.w3.org/2000/svg\""; // a name, fetched by nobody
    frame.replace(frame.find(drawings), drawings.size(), "");
    for (const char *outside :
         {"src=", "href=", "http:", "https:", "url(", "@import", "fetch(", "innerHTML", "eval("}) {
        EXPECT_EQ(frame.find(outside), std::string::npos) << outside;
    }
    EXPECT_NE(frame.find("default-src 'none'; script-src 'sha256-"), std::string::npos);
}

TEST_F(Report, NothingOfTheLogIsMarkup) {
    const std::string frame = frameOf(written());
    const std::string_view hostile = "</script><img src=x onerror=alert(1)><!--<script>";
    for (int first = 0; first < 256; first += 64) {
        std::string bytes = sample_logs::bytesOf(Kind::simple);
        for (const std::size_t buffer :
             {IN_ENTRY(3, rdr.IdString), IN_ENTRY(3, rpt.ResourceTag),
              IN_ENTRY(1, entry.Event.EventDataUnion.UserEvent.UserEventData)}) {
            std::string text(hostile);
            for (int byte = first; byte < first + 64; ++byte) {
                text += static_cast<char>(byte);
            }
            put(bytes, buffer + offsetof(SaHpiTextBufferT, DataLength),
                static_cast<std::uint8_t>(text.size()));
            bytes.replace(buffer + offsetof(SaHpiTextBufferT, Data), text.size(), text);
        }
        writeFile(log, bytes);
        const std::string output = written();
        EXPECT_EQ(frameOf(output), frame);
        EXPECT_EQ(dataOf(output).find('<'), std::string::npos);
        const Document data = parsed(output);
        EXPECT_TRUE(std::string_view(data["Rows"][2][3].GetString()).starts_with(hostile));
    }
}

// The name of a file may hold any byte but a slash and the end.
TEST_F(Report, TheNameOfTheLog) {
    std::string name;
    for (int byte = 1; byte < 256; ++byte) {
        name += byte == '/' ? "" : std::string(1, static_cast<char>(byte));
    }
    name = "</script>" + name.substr(100);
    const std::string folderName = folder.file("<");
    ASSERT_EQ(mkdir(folderName.c_str(), 0700), 0);
    log = folderName + name.substr(1); // "<" and "/script>...", a folder and a file
    writeFile(log, sample_logs::bytesOf(Kind::simple));
    const std::string output = written();
    const Document data = parsed(output);
    EXPECT_TRUE(std::string_view(data["Stat"]["Info"]["File"].GetString())
                    .starts_with(folder.path() + "/</script>"));
    EXPECT_EQ(dataOf(output).find('<'), std::string::npos);
}

TEST_F(Report, ADamagedLogIsReportedInThePageToo) {
    std::string bytes = sample_logs::bytesOf(Kind::simple);
    put(bytes, IN_ENTRY(1, entry.EntryId), std::uint32_t{9});
    writeFile(log, bytes);
    const Document data = parsed(written({}, 3));
    EXPECT_EQ(data["Rows"].Size(), 2U);
    ASSERT_EQ(data["Notices"].Size(), 1U);
    EXPECT_STREQ(data["Notices"][0].GetString(), "The log is damaged: entry 1 calls itself 9. Only "
                                                 "the entries after that are here.");
}

// ---- The file -----------------------------------------------------------------------------------

TEST_F(Report, AnOlderPageIsReplacedAsAWhole) {
    writeFile(page, std::string(1'000'000, 'x'));
    ASSERT_EQ(chmod(page.c_str(), 0640), 0);
    const int reader = open(page.c_str(), O_RDONLY);
    EXPECT_EQ(program::run({"report", "-o", page, log}).exitStatus, 0);
    char first = 0;
    EXPECT_EQ(read(reader, &first, 1), 1);
    EXPECT_EQ(first, 'x'); // who reads the old one has all of it
    close(reader);
    EXPECT_TRUE(readFile(page).ends_with("</html>\n"));
    struct stat status {};
    ASSERT_EQ(stat(page.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(Report, ANewPageHasTheUsualRights) {
    const mode_t before = umask(027);
    EXPECT_EQ(program::run({"report", "-o", page, log}).exitStatus, 0);
    umask(before);
    struct stat status {};
    ASSERT_EQ(stat(page.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(Report, ALinkStaysALink) {
    const std::string link = folder.file("link");
    writeFile(page, "old");
    ASSERT_EQ(symlink("page.html", link.c_str()), 0);
    EXPECT_EQ(program::run({"report", "-o", link, log}).exitStatus, 0);
    EXPECT_TRUE(readFile(page).ends_with("</html>\n"));
    struct stat status {};
    ASSERT_EQ(lstat(link.c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    expectFiles({"link", "log", "page.html"});
}

TEST_F(Report, ADeviceStaysADevice) {
    const Result null = program::run({"report", "-o", "/dev/null", log});
    EXPECT_EQ(null.exitStatus, 0);
    struct stat status {};
    ASSERT_EQ(stat("/dev/null", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
    const Result full = program::run({"report", "-o", "/dev/full", log});
    EXPECT_EQ(full.exitStatus, 4);
    EXPECT_EQ(full.errors,
              "evtlogctl: /dev/full cannot be written: No space left on device; check the disk\n");
}

TEST_F(Report, TheLogIsNotOverwritten) {
    const std::string before = readFile(log);
    for (const std::string &name : {log, folder.file("link")}) {
        if (name != log) {
            ASSERT_EQ(symlink("log", name.c_str()), 0);
        }
        const Result result = program::run({"report", "-o", name, log});
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(result.errors,
                  "evtlogctl: " + name + " is the log itself; name another file for the page\n");
        EXPECT_EQ(readFile(log), before);
    }
}

TEST_F(Report, WhatCannotBeWrittenLeavesNothingBehind) {
    const Result nowhere = program::run({"report", "-o", folder.file("no/page"), log});
    EXPECT_EQ(nowhere.exitStatus, 4);
    EXPECT_EQ(nowhere.errors, "evtlogctl: " + folder.file("no/page") +
                                  " cannot be made: No such file or directory; check the name and "
                                  "its permissions\n");
    writeFile(log, "short");
    EXPECT_EQ(program::run({"report", "-o", page, log}).exitStatus, 3);
    EXPECT_FALSE(exists(page));
    expectFiles({"log"});
}

TEST_F(Report, WrongUsage) {
    EXPECT_EQ(program::run({"report", log}).exitStatus, 2);
    EXPECT_EQ(program::run({"report", "-o", "", log}).exitStatus, 2);
    EXPECT_EQ(program::run({"report", "-o", page, "-n", "many", log}).exitStatus, 2);
    EXPECT_FALSE(exists(page));
}

} // namespace
