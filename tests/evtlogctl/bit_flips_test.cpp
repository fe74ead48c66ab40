// Goal: of a log of every type each bit is flipped in turn. check reports the flip, or the table in
// the manual says that it cannot; and neither check nor list, print, dump or a start of the log
// crashes, hangs or reads outside, whichever bit it is.
#include <array>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "eventlog/store_state.h"
#include "tests/evtlogctl/listed_log.h"
#include "tests/evtlogctl/sample_logs.h"
#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_check.h"
#include "tools/evtlogctl/log_line.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

using namespace zusahpi;
using sample_logs::Kind;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

// Under a sanitizer only every so-manieth bit, a prime so that every bit of a byte has its turn.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t stride = 23;
#else
constexpr std::size_t stride = 1;
#endif

// A file in memory where there is one: a Linked log is written synchronously.
void preferMemory() {
    if (access("/dev/shm", W_OK) == 0) {
        setenv("TMPDIR", "/dev/shm", 1);
    }
}

// The sample log; of the Circular one the oldest entry is deleted, so that it holds a dead record.
std::string logOf(Kind kind) {
    if (kind != Kind::circular) {
        return sample_logs::bytesOf(kind);
    }
    const ScratchFolder folder;
    const std::string path = folder.file("log");
    writeFile(path, sample_logs::bytesOf(kind));
    test_support::inChild([&] {
        sample_logs::startStore(path, ZUSAHPI_EL_TYPE_CIRCULAR, 3, ZUSAHPI_EL_WRAP);
        ASSERT_EQ(zuSaHpiEventLogEntryDel(SAHPI_OLDEST_ENTRY, 0), SA_OK);
    });
    return readFile(path);
}

// A file with one bit of it flipped.
class FlippedFile {
  public:
    FlippedFile(std::string path, std::string bytes)
        : path_(std::move(path)), bytes_(std::move(bytes)) {
        writeFile(path_, bytes_);
        descriptor_ = open(path_.c_str(), O_RDWR | O_CLOEXEC);
    }
    ~FlippedFile() {
        close(descriptor_);
    }
    FlippedFile(const FlippedFile &) = delete;
    FlippedFile &operator=(const FlippedFile &) = delete;

    [[nodiscard]] const std::string &path() const {
        return path_;
    }
    [[nodiscard]] std::size_t bits() const {
        return bytes_.size() * 8;
    }
    void flip(std::size_t bit) const {
        put(bit / 8, static_cast<char>(bytes_[bit / 8] ^ (1 << bit % 8)));
    }
    void restore(std::size_t bit) const {
        put(bit / 8, bytes_[bit / 8]);
    }
    // Whatever was done to it.
    void restoreAll() const {
        EXPECT_EQ(pwrite(descriptor_, bytes_.data(), bytes_.size(), 0),
                  static_cast<ssize_t>(bytes_.size()));
        EXPECT_EQ(ftruncate(descriptor_, static_cast<off_t>(bytes_.size())), 0);
    }

  private:
    void put(std::size_t offset, char byte) const {
        EXPECT_EQ(pwrite(descriptor_, &byte, 1, static_cast<off_t>(offset)), 1);
    }

    std::string path_;
    std::string bytes_;
    int descriptor_ = -1;
};

// ---- What check sees ----------------------------------------------------------------------------

std::string findingsOf(const std::string &path) {
    const evtlogctl::LogFile file(path);
    evtlogctl::CheckedLog log;
    evtlogctl::checkLog(file, log);
    return linesOf(log.findings);
}

// A byte of the file as the manual's table names it: what kind of record, and where in it.
struct Spot {
    std::string record;
    std::size_t offset;
};

constexpr auto entriesBegin = static_cast<std::size_t>(eventlog::entriesOffset);
constexpr std::size_t recordSize = sizeof(EventLogEntryRecord);

// Which slots wait in the interrupted log, and which records they replace, is known: entries 4, 5.
std::string kindOfRecord(Kind kind, std::size_t number) {
    switch (kind) {
    case Kind::circular:
        return number == 2 ? "outside the ring" : "entry";
    case Kind::linked:
        return number == 2 || number == 4 ? "deleted" : "entry";
    case Kind::interrupted:
        return number == 2 ? "deleted" : number >= 4 ? "replaced" : "entry";
    default:
        return "entry";
    }
}

Spot spotOf(Kind kind, std::size_t offset) {
    constexpr auto slotsBegin = static_cast<std::size_t>(eventlog::transactionLogOffset);
    if (offset < slotsBegin) {
        return {"info", offset};
    }
    if (offset < entriesBegin) {
        const std::size_t slot = (offset - slotsBegin) / recordSize;
        const bool waits = kind == Kind::interrupted && slot < 2;
        return {waits ? "entry" : "slot", (offset - slotsBegin) % recordSize};
    }
    return {kindOfRecord(kind, (offset - entriesBegin) / recordSize + 1),
            (offset - entriesBegin) % recordSize};
}

struct Row {
    std::string record;
    std::size_t offset;
    std::size_t bytes;
    std::string field;
};

// The rows "| record | offset | bytes | field | ..." under the heading, up to the next one.
std::vector<Row> manualsTable() {
    std::ifstream document(ZUSAHPI_TEST_DATA "/../docs/evtlogctl.md");
    const std::regex pattern("\\| ([a-z ]+) \\| (\\d+) \\| (\\d+) \\| ([^|]+) \\|.*");
    std::vector<Row> rows;
    bool under = false;
    for (std::string line; std::getline(document, line);) {
        std::smatch match;
        if (line.starts_with("##")) {
            under = line == "### What check cannot see";
        } else if (under && std::regex_match(line, match, pattern)) {
            rows.push_back({match[1], std::stoul(match[2]), std::stoul(match[3]), match[4]});
        }
    }
    return rows;
}

TEST(BitFlips, CheckReportsThemOrTheManualSaysThatItCannot) {
    preferMemory();
    const ScratchFolder folder;
    const std::vector<Row> rows = manualsTable();
    std::vector<std::size_t> unseenIn(rows.size());
    std::size_t flips = 0;
    std::size_t unseen = 0;
    std::set<std::string> unlisted;
    for (const Kind kind : sample_logs::allKinds) {
        const FlippedFile file(folder.file(sample_logs::nameOf(kind)), logOf(kind));
        const std::string before = findingsOf(file.path());
        for (std::size_t bit = 0; bit < file.bits(); bit += stride) {
            file.flip(bit);
            ++flips;
            if (findingsOf(file.path()) == before) {
                ++unseen;
                const Spot spot = spotOf(kind, bit / 8);
                bool listed = false;
                for (std::size_t i = 0; i < rows.size(); ++i) {
                    if (rows[i].record == spot.record && spot.offset >= rows[i].offset &&
                        spot.offset < rows[i].offset + rows[i].bytes) {
                        listed = true;
                        ++unseenIn[i];
                    }
                }
                if (!listed) {
                    unlisted.insert(fmt::format("{} {}", spot.record, spot.offset));
                }
            }
            file.restore(bit);
        }
    }
    for (const std::string &each : unlisted) {
        ADD_FAILURE() << "flips go unseen, and the manual does not say so: " << each;
    }
    for (std::size_t i = 0; i < rows.size() && stride == 1; ++i) {
        EXPECT_GT(unseenIn[i], 0U) << "the manual says too much: " << rows[i].record << " "
                                   << rows[i].offset << " " << rows[i].field;
    }
    EXPECT_FALSE(rows.empty());
    fmt::print("figure: bit flips checked: {}\n", flips);
    fmt::print("figure: bit flips that check reports: {}\n", flips - unseen);
    fmt::print("figure: bit flips that the manual lists as unprotected: {}\n", unseen);
}

// ---- What reads a file --------------------------------------------------------------------------

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

enum class Form : int { text = 0, hex = 1 };

void print(const std::string &path, std::FILE *out, Form form) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    (void)zuSaHpiPrintlog(reinterpret_cast<zuSaHpiHandleT>(out), descriptor,
                          static_cast<int>(form));
    close(descriptor);
}

void list(const std::string &path) {
    try {
        for (const EventLogEntryRecord &entry : listed_log::list(path).entries) {
            const std::string line = evtlogctl::logLine(entry);
            EXPECT_EQ(line.find('\n'), std::string::npos);
        }
    } catch (const evtlogctl::Failure &failure) { // it is no log any more
        EXPECT_EQ(failure.status, evtlogctl::Status::damaged) << failure.what();
    }
}

// A start of the log in this process, what a program would then do, and its end. The library exits
// when it refuses the log.
void startAndUse(const std::string &path, const EventLogInfoRecord &like) {
    sample_logs::startStore(path, like.type, like.sa.Size, like.overflowAction);
    EventLogEntryRecord entry;
    for (std::uint32_t number = 0; number <= like.sa.Size; ++number) {
        (void)zuSaHpiEventLogEntryGet(number, &entry);
    }
    const EventLogAddRecord added = sample_logs::recordOf(6);
    (void)zuSaHpiEventLogEntryAdd(&added, 1);
    (void)zuSaHpiEventLogEntryDel(SAHPI_OLDEST_ENTRY, 0);
    close(eventlog::store.fd);
    unlink(eventlog::store.lockPath.data());
}

// Starts are made one after another in a child, a new one for each that ends it. `at` is where it
// is; shared, so that it outlives the child.
void startFlipped(const FlippedFile &file, const EventLogInfoRecord &like, std::size_t &at) {
    while (at < file.bits()) {
        const pid_t child = fork();
        if (child == 0) {
            const int nothing = open("/dev/null", O_WRONLY);
            dup2(nothing, STDOUT_FILENO);
            dup2(nothing, STDERR_FILENO);
            for (; at < file.bits(); at += stride) {
                alarm(120); // a start that never ends, on a machine however busy
                file.flip(at);
                startAndUse(file.path(), like);
                file.restoreAll();
            }
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1)
            << "bit " << at << ": status " << status;
        if (at < file.bits()) { // refused
            file.restoreAll();
            unlink((file.path() + ".lck").c_str());
            at += stride;
        }
    }
}

class BitFlips : public testing::TestWithParam<Kind> {
  protected:
    BitFlips() {
        preferMemory();
    }
};

TEST_P(BitFlips, NeitherPrintNorDumpNorListCrashes) {
    const ScratchFolder folder;
    const FlippedFile file(folder.file("log"), logOf(GetParam()));
    const Stream nowhere(std::fopen("/dev/null", "w"), std::fclose);
    std::size_t flips = 0;
    std::size_t dumped = 0;
    for (std::size_t bit = 0; bit < file.bits(); bit += stride) {
        file.flip(bit);
        print(file.path(), nowhere.get(), Form::text);
        list(file.path());
        if (bit % 7 == 0) { // a dump hardly looks at what it shows
            print(file.path(), nowhere.get(), Form::hex);
            ++dumped;
        }
        file.restore(bit);
        ++flips;
    }
    fmt::print("figure: bit flips printed and listed: {}\n", flips);
    fmt::print("figure: bit flips dumped: {}\n", dumped);
}

TEST_P(BitFlips, NoStartCrashes) {
    const ScratchFolder folder;
    const std::string bytes = logOf(GetParam());
    const FlippedFile file(folder.file("log"), bytes);
    void *const shared = mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    auto &at = *new (shared) std::size_t(0);
    startFlipped(file, sample_logs::get<EventLogInfoRecord>(bytes, 0), at);
    EXPECT_GE(at, file.bits());
    fmt::print("figure: bit flips started: {}\n", at / stride);
    munmap(shared, sizeof(std::size_t));
}

INSTANTIATE_TEST_SUITE_P(EveryType, BitFlips, testing::ValuesIn(sample_logs::allKinds),
                         [](const auto &parameter) {
                             return std::string(sample_logs::nameOf(parameter.param));
                         });

} // namespace
