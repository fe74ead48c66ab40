// Goal: a log of any type is read as the store would read it, without lock and without writing; an
// interrupted update is applied in memory; whatever the bytes are, the reader ends, says what is
// wrong and stays within the file; and while another process writes, what it returns was true.
#include "tools/evtlogctl/log_reader.h"

#include <algorithm>
#include <csignal>
#include <cstring>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "eventlog/log_format.h"
#include "tests/evtlogctl/listed_log.h"
#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/patience.h"
#include "tools/evtlogctl/failure.h"

namespace {

using namespace zusahpi;
using evtlogctl::Failure;
using evtlogctl::Snapshot;
using listed_log::list;
using listed_log::Listed;
using test_support::inChild;
using test_support::readFile;
using test_support::ScratchFolder;
using test_support::writeFile;

constexpr std::uint32_t none = ZUSAHPI_EL_NO_ENTRY;

// ---- Logs that the store writes -----------------------------------------------------------------

void startStore(const std::string &path, std::uint32_t type, std::uint32_t size,
                std::uint32_t overflowAction) {
    EventLogControlBlock block{};
    block.size = ZUSAHPI_EL_CONTROL_BLOCK_SIZE;
    block.magic = ZUSAHPI_EL_CONTROL_BLOCK_MAGIC;
    block.info.sa.Size = size;
    block.info.sa.Enabled = SAHPI_TRUE;
    block.info.type = type;
    block.info.overflowAction = overflowAction;
    block.info.oldest = none;
    block.info.newest = none;
    block.info.freeHead = none;
    block.fileEnabled = 1;
    std::strncpy(block.fileName, path.c_str(), sizeof block.fileName - 1);
    ASSERT_EQ(zuSaHpiEventLogInit(&block), SA_OK);
}

// An entry that carries its place in the order of adding.
void add(std::uint32_t serial) {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.EventType = SAHPI_ET_RESOURCE;
    record.event.Source = serial;
    record.rdr.RecordId = serial; // at the other end of the record
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 1), SA_OK);
}

std::vector<std::uint32_t> serials(const Listed &log) {
    std::vector<std::uint32_t> result;
    for (const EventLogEntryRecord &entry : log.entries) {
        EXPECT_EQ(entry.entry.Event.Source, entry.rdr.RecordId);
        result.push_back(entry.entry.Event.Source);
    }
    return result;
}

std::vector<std::uint32_t> ids(const Listed &log) {
    std::vector<std::uint32_t> result;
    for (const EventLogEntryRecord &entry : log.entries) {
        result.push_back(entry.entry.EntryId);
    }
    return result;
}

using Numbers = std::vector<std::uint32_t>;

class StoreLog : public testing::Test {
  protected:
    ScratchFolder folder;
    std::string path = folder.file("log");
};

TEST_F(StoreLog, EmptyLogs) {
    for (const std::uint32_t type : {0U, 1U, 2U}) {
        const std::string each = path + std::to_string(type);
        inChild([&] { startStore(each, type, 3, ZUSAHPI_EL_DROP); });
        const Listed log = list(each);
        EXPECT_TRUE(log.entries.empty());
        EXPECT_EQ(log.damage, "");
        EXPECT_EQ(log.info.type, type);
    }
}

TEST_F(StoreLog, SimpleLogWithItsLastEntryReplaced) {
    inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_SIMPLE, 3, ZUSAHPI_EL_WRITE_LAST);
        for (std::uint32_t serial = 1; serial <= 5; ++serial) {
            add(serial);
        }
    });
    const Listed log = list(path);
    EXPECT_EQ(serials(log), (Numbers{1, 2, 5}));
    EXPECT_EQ(ids(log), (Numbers{1, 2, 3}));
    EXPECT_EQ(log.damage, "");
}

TEST_F(StoreLog, CircularLogThatWrapped) {
    inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_CIRCULAR, 4, ZUSAHPI_EL_WRAP);
        for (std::uint32_t serial = 1; serial <= 6; ++serial) {
            add(serial);
        }
    });
    const Listed log = list(path);
    EXPECT_EQ(serials(log), (Numbers{3, 4, 5, 6}));
    EXPECT_EQ(ids(log), (Numbers{3, 4, 1, 2}));
    EXPECT_EQ(log.damage, "");
    EXPECT_EQ(serials(list(path, 3)), (Numbers{4, 5, 6}));
    EXPECT_EQ(serials(list(path, 1)), (Numbers{6}));
    EXPECT_TRUE(list(path, 0).entries.empty());
    EXPECT_EQ(list(path, 0).damage, "");
}

TEST_F(StoreLog, LinkedLogWithReusedNumbers) {
    inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_LINKED, 4, ZUSAHPI_EL_WRAP);
        for (std::uint32_t serial = 1; serial <= 4; ++serial) {
            add(serial);
        }
        ASSERT_EQ(zuSaHpiEventLogEntryDel(2, 0), SA_OK);
        add(5);
        add(6);
    });
    const Listed log = list(path);
    EXPECT_EQ(serials(log), (Numbers{3, 4, 5, 6}));
    EXPECT_EQ(ids(log), (Numbers{3, 4, 2, 1}));
    EXPECT_EQ(log.damage, "");
}

TEST_F(StoreLog, TheFileIsLeftAsItIsAndNeedsNoRightToWrite) {
    inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_CIRCULAR, 4, ZUSAHPI_EL_WRAP);
        add(1);
    });
    const std::string before = readFile(path);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(serials(list(path)), (Numbers{1}));
    EXPECT_EQ(readFile(path), before);
    EXPECT_FALSE(test_support::exists(path + ".lck"));
}

TEST_F(StoreLog, InfoRecordAndFileSize) {
    inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_CIRCULAR, 4, ZUSAHPI_EL_WRAP);
        add(1);
        add(2);
    });
    const evtlogctl::LogInfo log = evtlogctl::readLogInfo(path);
    EXPECT_EQ(log.info.sa.Entries, 2U);
    EXPECT_EQ(log.info.maxUsed, 2U);
    EXPECT_EQ(log.fileSize, 6064 + 2 * 1496);
}

// ---- Another process writes ---------------------------------------------------------------------

// A process that adds entries 1, 2, 3 ... until it is killed.
class Writer {
  public:
    Writer(const std::string &path, std::uint32_t type, std::uint32_t size) {
        process_ = fork();
        if (process_ == 0) {
            startStore(path, type, size, ZUSAHPI_EL_WRAP);
            for (std::uint32_t serial = 1;; ++serial) {
                add(serial);
                usleep(20); // far more events than any machine has, but not all that it can do
            }
        }
    }
    ~Writer() {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

  private:
    pid_t process_;
};

// The second entry is in the file, so that the first one is in the log.
void waitForAnEntry(const std::string &path) {
    EXPECT_TRUE(test_support::comesTrue([&] {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 && status.st_size > eventlog::entryOffset(2);
    })) << "no log appears";
}

void readWhileWritten(const std::string &path, std::uint32_t type, std::uint32_t size) {
    const Writer writer(path, type, size);
    waitForAnEntry(path);
    std::uint32_t newest = 0;
    for (int i = 0; i < 5; ++i) {
        const Listed log = list(path);
        EXPECT_EQ(log.damage, "");
        const Numbers found = serials(log);
        if (found.empty()) { // a small log may be written all over before its entries are read
            EXPECT_GT(log.overwritten, 0U);
            continue;
        }
        EXPECT_LE(found.size(), size);
        for (std::size_t at = 1; at < found.size(); ++at) {
            ASSERT_GT(found[at], found[at - 1]) << at << " of " << found.size();
            if (log.overwritten == 0) {
                ASSERT_EQ(found[at], found[at - 1] + 1) << at << " of " << found.size();
            }
        }
        EXPECT_GE(found.back(), newest);
        newest = found.back();
    }
}

TEST_F(StoreLog, LinkedLogThatAnotherProcessFills) {
    readWhileWritten(path, ZUSAHPI_EL_TYPE_LINKED, 100'000);
}

TEST_F(StoreLog, LinkedLogThatAnotherProcessWraps) {
    readWhileWritten(path, ZUSAHPI_EL_TYPE_LINKED, 20);
}

TEST_F(StoreLog, CircularLogThatAnotherProcessWraps) {
    readWhileWritten(path, ZUSAHPI_EL_TYPE_CIRCULAR, 5'000);
}

// Entries that are overwritten after it is known which ones the log has are left out and counted.
// Those that were read together before the change are there.
TEST_F(StoreLog, EntriesOverwrittenWhileTheyAreRead) {
    for (const std::uint32_t type : {ZUSAHPI_EL_TYPE_CIRCULAR, ZUSAHPI_EL_TYPE_LINKED}) {
        const std::string each = path + std::to_string(type);
        const auto addFromTo = [&](std::uint32_t first, std::uint32_t last) {
            inChild([&] {
                startStore(each, type, 100, ZUSAHPI_EL_WRAP);
                for (std::uint32_t serial = first; serial <= last; ++serial) {
                    add(serial);
                }
            });
        };
        addFromTo(1, 100);
        const evtlogctl::LogFile file(each);
        const Snapshot snapshot = evtlogctl::readLog(file);
        evtlogctl::SnapshotReader reader(file, snapshot);
        const EventLogEntryRecord *record = reader.next();
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->entry.Event.Source, 1U);
        addFromTo(101, 190);
        Numbers rest;
        while ((record = reader.next()) != nullptr) {
            EXPECT_EQ(record->entry.Event.Source, record->rdr.RecordId);
            rest.push_back(record->entry.Event.Source);
        }
        ASSERT_GE(rest.size(), 10U);
        EXPECT_EQ(Numbers(rest.end() - 10, rest.end()),
                  (Numbers{91, 92, 93, 94, 95, 96, 97, 98, 99, 100}));
        EXPECT_TRUE(std::is_sorted(rest.begin(), rest.end()));
        EXPECT_EQ(rest.size() + reader.overwritten(), 99U);
        EXPECT_GT(reader.overwritten(), 0U);
    }
}

TEST_F(StoreLog, TheFileIsCutWhileItIsRead) {
    inChild([&] {
        startStore(path, ZUSAHPI_EL_TYPE_SIMPLE, 200, ZUSAHPI_EL_DROP);
        for (std::uint32_t serial = 1; serial <= 200; ++serial) {
            add(serial);
        }
    });
    const evtlogctl::LogFile file(path);
    const Snapshot snapshot = evtlogctl::readLog(file);
    evtlogctl::SnapshotReader reader(file, snapshot);
    ASSERT_EQ(truncate(path.c_str(), eventlog::entryOffset(31)), 0);
    std::uint32_t read = 0;
    while (reader.next() != nullptr) {
        ++read;
    }
    EXPECT_EQ(read, 30U);
    EXPECT_EQ(reader.overwritten(), 170U);
}

// ---- Logs made by hand --------------------------------------------------------------------------

struct Image {
    EventLogInfoRecord info{};
    std::vector<EventLogEntryRecord> slots = std::vector<EventLogEntryRecord>(4);
    std::vector<EventLogEntryRecord> entries;

    [[nodiscard]] std::string bytes() const {
        std::string result(reinterpret_cast<const char *>(&info), sizeof info);
        for (const auto *area : {&slots, &entries}) {
            for (const EventLogEntryRecord &record : *area) {
                result.append(reinterpret_cast<const char *>(&record), sizeof record);
            }
        }
        return result;
    }
};

EventLogEntryRecord entry(std::uint32_t id, std::uint32_t prev, std::uint32_t next) {
    EventLogEntryRecord record{};
    record.prev = prev;
    record.next = next;
    record.entry.EntryId = id;
    record.entry.Event.Source = id;
    record.rdr.RecordId = id;
    return record;
}

// Entries 1, 2, 3 in this order.
Image linkedImage() {
    Image image;
    image.info.sa.Entries = 3;
    image.info.sa.Size = 10;
    image.info.type = ZUSAHPI_EL_TYPE_LINKED;
    image.info.oldest = 1;
    image.info.newest = 3;
    image.info.freeHead = none;
    image.info.maxUsed = 3;
    image.entries = {entry(1, none, 2), entry(2, 1, 3), entry(3, 2, none)};
    for (EventLogEntryRecord &slot : image.slots) {
        slot.entry.EntryId = none;
    }
    return image;
}

// Entries of these ids and serial numbers.
Snapshot snapshotOf(const std::vector<std::pair<std::uint32_t, std::uint32_t>> &entries) {
    Snapshot snapshot;
    for (const auto &[id, serial] : entries) {
        EventLogEntryRecord record = entry(id, none, none);
        record.entry.Event.Source = serial;
        record.rdr.RecordId = serial;
        snapshot.entries.push_back({id, evtlogctl::fingerprint(record)});
    }
    return snapshot;
}

Numbers idsOf(const Snapshot &snapshot) {
    Numbers result;
    for (const evtlogctl::FoundEntry &entry : snapshot.entries) {
        result.push_back(entry.number);
    }
    return result;
}

TEST(UnchangedRun, WhatTwoReadingsFoundAlike) {
    using evtlogctl::unchangedRun;
    const Snapshot earlier = snapshotOf({{1, 11}, {2, 12}, {3, 13}});
    EXPECT_EQ(idsOf(unchangedRun(earlier, earlier)), (Numbers{1, 2, 3}));
    // One more, and the oldest one overwritten.
    EXPECT_EQ(idsOf(unchangedRun(earlier, snapshotOf({{2, 12}, {3, 13}, {1, 14}}))),
              (Numbers{2, 3}));
    // A place that holds another entry now does not count.
    EXPECT_EQ(idsOf(unchangedRun(earlier, snapshotOf({{3, 13}, {1, 14}, {2, 15}}))), (Numbers{3}));
    EXPECT_TRUE(unchangedRun(earlier, snapshotOf({{1, 14}, {2, 15}})).entries.empty());
    EXPECT_TRUE(unchangedRun(earlier, {}).entries.empty());
    EXPECT_TRUE(unchangedRun({}, earlier).entries.empty());
}

TEST(UnchangedRun, OfSeveralRunsTheLongest) {
    const Snapshot earlier = snapshotOf({{1, 11}, {2, 12}, {4, 14}, {5, 15}, {6, 16}, {8, 18}});
    const Snapshot later =
        snapshotOf({{1, 11}, {2, 12}, {3, 13}, {4, 14}, {5, 15}, {6, 16}, {7, 17}, {8, 18}});
    EXPECT_EQ(idsOf(evtlogctl::unchangedRun(earlier, later)), (Numbers{4, 5, 6}));
}

// Links may change: they follow the neighbours. Every other bit tells entries apart, also two bits
// that a sum of the words would cancel out.
TEST(Fingerprint, TellsEntriesApartByAllButTheirLinks) {
    const EventLogEntryRecord record = entry(3, 2, 4);
    const std::uint64_t known = evtlogctl::fingerprint(record);
    EXPECT_EQ(evtlogctl::fingerprint(entry(3, 7, none)), known);
    constexpr std::size_t begin = offsetof(EventLogEntryRecord, entry);
    const auto flipped = [&](std::initializer_list<std::size_t> bits) {
        EventLogEntryRecord changed = record;
        for (const std::size_t bit : bits) {
            unsigned char &byte = reinterpret_cast<unsigned char *>(&changed)[begin + bit / 8];
            byte = static_cast<unsigned char>(byte ^ 1U << bit % 8);
        }
        return evtlogctl::fingerprint(changed);
    };
    constexpr std::size_t bits = 8 * (sizeof record - begin);
    for (std::size_t bit = 0; bit < bits; ++bit) {
        EXPECT_NE(flipped({bit}), known) << bit;
        for (const std::size_t distance : {1, 8, 63, 64, 128, 256}) {
            if (bit + distance < bits) {
                EXPECT_NE(flipped({bit, bit + distance}), known) << bit << " and " << distance;
            }
        }
    }
}

class MadeLog : public testing::Test {
  protected:
    Listed read(const Image &image) {
        writeFile(path, image.bytes());
        return list(path);
    }
    void expectDamage(const Image &image, const std::string &damage, const Numbers &found) {
        const Listed log = read(image);
        EXPECT_EQ(log.damage, damage);
        EXPECT_EQ(ids(log), found);
    }

    ScratchFolder folder;
    std::string path = folder.file("log");
};

TEST_F(MadeLog, SoundChain) {
    expectDamage(linkedImage(), "", {1, 2, 3});
}

TEST_F(MadeLog, InterruptedUpdateIsAppliedInMemory) {
    Image image = linkedImage();
    image.info.updating = 1;
    image.info.newest = 4;
    image.info.maxUsed = 4;
    image.info.sa.Entries = 4;
    image.slots[0] = entry(4, 3, none); // not in place yet
    image.slots[1] = entry(3, 2, 4);
    expectDamage(image, "", {1, 2, 3, 4});
    // Slots after the end mark do not count.
    image.slots[2].entry.EntryId = none;
    image.slots[3] = entry(2, 77, 77);
    expectDamage(image, "", {1, 2, 3, 4});
    // Without the flag the slots are what an earlier update left.
    image = linkedImage();
    image.slots[0] = entry(2, 77, 77);
    expectDamage(image, "", {1, 2, 3});
}

TEST_F(MadeLog, TheLastSlotOfANumberCounts) {
    Image image = linkedImage();
    image.info.updating = 0x80000000U;
    image.slots[0] = entry(3, 77, 77);
    image.slots[1] = entry(3, 2, none);
    expectDamage(image, "", {1, 2, 3});
}

TEST_F(MadeLog, ChainsThatRunInACircle) {
    Image image = linkedImage();
    image.entries[0] = entry(1, 3, 2);
    image.info.oldest = 9; // never reached
    image.info.maxUsed = 9;
    expectDamage(image, "the links between entries 3 and 1 contradict each other", {1, 2, 3});
    image = linkedImage();
    image.entries[2] = entry(3, 3, none);
    expectDamage(image, "the links between entries 3 and 3 contradict each other", {3});
}

TEST_F(MadeLog, NewestEntryThatIsNone) {
    Image image = linkedImage();
    image.entries[2] = entry(3, 2, 1);
    expectDamage(image, "the newest entry 3 has a link to a newer one", {});
}

TEST_F(MadeLog, LinksOutOfRange) {
    Image image = linkedImage();
    image.entries[1].prev = 0;
    expectDamage(image, "entry 0 is out of range", {2, 3});
    image.entries[1].prev = 0xFFFFFFFE;
    expectDamage(image, "entry 4294967294 is out of range", {2, 3});
    image.info.newest = none;
    expectDamage(image, "entry 4294967295 is out of range", {});
}

TEST_F(MadeLog, RecordsThatDoNotFit) {
    Image image = linkedImage();
    image.entries[1].deleted = 1;
    expectDamage(image, "entry 2 is marked deleted", {3});
    image = linkedImage();
    image.entries[1].entry.EntryId = 5;
    expectDamage(image, "entry 2 calls itself 5", {3});
    image = linkedImage();
    image.entries.pop_back();
    expectDamage(image, "the file ends before entry 3", {});
}

TEST_F(MadeLog, WrongCount) {
    Image image = linkedImage();
    image.info.sa.Entries = 5;
    expectDamage(image, "the log counts 5 entries, but 3 were found", {1, 2, 3});
}

TEST_F(MadeLog, NumbersBeyondTheFile) {
    Image image = linkedImage();
    image.info.type = ZUSAHPI_EL_TYPE_CIRCULAR;
    image.info.sa.Entries = 0xFFFFFFFE;
    image.info.sa.Size = 0xFFFFFFFE;
    image.info.maxUsed = 0xFFFFFFFE;
    image.info.oldest = 4;
    expectDamage(image, "the file ends before entry 4294967294", {1, 2, 3});
    image.info.newest = 0x80000000;
    expectDamage(image, "the file ends before entry 2147483648", {});
}

TEST_F(MadeLog, OldestThatIsNeverReached) {
    Image image = linkedImage();
    image.info.type = ZUSAHPI_EL_TYPE_CIRCULAR;
    image.info.oldest = 7;
    expectDamage(image, "the oldest entry is not reached", {1, 2, 3});
    image.info.type = ZUSAHPI_EL_TYPE_SIMPLE;
    image.info.maxUsed = 9;
    expectDamage(image, "entry 0 is out of range", {1, 2, 3});
}

// A log whose time was set back is not taken for one that is being written for ever.
TEST_F(MadeLog, FullCircularLogWhoseTimeWasSetBack) {
    Image image = linkedImage();
    image.info.type = ZUSAHPI_EL_TYPE_CIRCULAR;
    image.info.sa.Size = 3;
    image.entries[0].entry.Timestamp = 1000;
    expectDamage(image, "", {1, 2, 3});
    image.info.oldest = 2; // entries 2, 3, 1, of which entry 1 is the newest and the latest
    image.info.newest = 1;
    expectDamage(image, "", {2, 3, 1});
}

TEST_F(MadeLog, EveryCutOfTheFile) {
    const std::string bytes = linkedImage().bytes();
    for (std::size_t size = 0; size < bytes.size(); size += 101) {
        writeFile(path, bytes.substr(0, size));
        if (size < 6064) {
            EXPECT_THROW((void)list(path), Failure);
            EXPECT_THROW((void)evtlogctl::readLogInfo(path), Failure);
        } else {
            EXPECT_NE(list(path).damage, "") << size;
        }
    }
}

TEST_F(MadeLog, RandomBytesInInfoAndLinks) {
    std::mt19937_64 random(0x106);
    for (int i = 0; i < 3000; ++i) {
        std::string bytes = linkedImage().bytes();
        for (int change = 0; change < 3; ++change) {
            const std::size_t record = sel_samples::below(8, random); // info record, slots, entries
            const std::size_t begin = record == 0 ? 0 : 80 + (record - 1) * 1496;
            bytes[begin + sel_samples::below(record == 0 ? 80 : 20, random)] =
                static_cast<char>(random());
        }
        writeFile(path, bytes);
        try {
            EXPECT_LE(list(path).entries.size(), 7U);
        } catch (const Failure &) { // a type that is none
        }
    }
}

std::string failureOf(const std::string &path) {
    try {
        (void)list(path);
    } catch (const Failure &failure) {
        return failure.what();
    }
    return "read";
}

TEST_F(MadeLog, WhatIsNoLog) {
    EXPECT_EQ(failureOf(folder.file("nothing")),
              folder.file("nothing") + " does not exist; name an event log file");
    EXPECT_EQ(failureOf(folder.path()),
              folder.path() + " is no log: it is not a regular file; name an event log file");
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(folder.file("pipe")),
              folder.file("pipe") + " is no log: it is not a regular file; name an event log file");
    writeFile(path, std::string(6063, '\0'));
    EXPECT_EQ(failureOf(path), path + " is no log: it is shorter than an empty log; name an event "
                                      "log file");
    Image image = linkedImage();
    image.info.type = 3;
    writeFile(path, image.bytes());
    EXPECT_EQ(failureOf(path),
              path + " is no log: its type is 3 instead of 0 to 2; name an event log file");
}

TEST_F(MadeLog, ALogPastFourGigabytes) {
    Image image = linkedImage();
    constexpr std::uint32_t far = 3'000'000; // 4.5 GB, nearly all of it a hole
    image.info.maxUsed = far;
    image.info.newest = far;
    image.entries[2] = entry(3, 2, far);
    image.info.sa.Entries = 4;
    writeFile(path, image.bytes());
    const EventLogEntryRecord last = entry(far, 3, none);
    std::FILE *const file = std::fopen(path.c_str(), "r+b");
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(fseeko(file, eventlog::entryOffset(far), SEEK_SET), 0);
    ASSERT_EQ(std::fwrite(&last, sizeof last, 1, file), 1U);
    std::fclose(file);
    const Listed log = list(path);
    EXPECT_EQ(log.damage, "");
    EXPECT_EQ(ids(log), (Numbers{1, 2, 3, far}));
}

} // namespace
