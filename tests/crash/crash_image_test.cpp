// The makers of crash images are held against images counted and written down by hand: a maker that
// forgets some would let every other test here pass for nothing.

#include "tests/crash/crash_image.h"

#include <set>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/files.h"

using namespace crash_test;
using test_support::FileEvent;

namespace {

FileEvent writeOf(std::size_t offset, std::size_t size, char fill) {
    return {FileEvent::Kind::write, offset, std::string(size, fill)};
}

struct Images {
    std::size_t visited = 0;
    std::set<std::string> distinct;
    std::vector<std::string> names;
};

Images imagesOf(const std::string &before, const std::vector<FileEvent> &events) {
    Images images;
    forEachCrashImage(before, events, [&](const CrashImage &image) {
        ++images.visited;
        images.distinct.insert(image.bytes);
        images.names.push_back(nameOf(image));
    });
    return images;
}

// One letter for each 512 bytes: what they are all filled with, '?' when not all the same.
std::string sectorsOf(const std::string &bytes) {
    std::string letters;
    for (std::size_t start = 0; start < bytes.size(); start += sectorSize) {
        const std::string sector = bytes.substr(start, sectorSize);
        const bool same = sector == std::string(sector.size(), sector[0]);
        letters += !same ? '?' : sector[0] == '\0' ? '0' : sector[0];
    }
    return letters;
}

TEST(CrashImages, AWriteInsideOneSectorIsWholeOrAbsent) {
    const Images images = imagesOf(std::string(6064, 'a'), {writeOf(0, 80, 'b')});
    EXPECT_EQ(images.names, (std::vector<std::string>{"after 0 events", "after 1 events"}));
    EXPECT_EQ(images.distinct.size(), 2U);
}

TEST(CrashImages, AWriteOfThreeSectorsIsTornInEveryWay) {
    std::set<std::string> found;
    forEachCrashImage(std::string(2048, 'a'), {writeOf(512, 1536, 'b')},
                      [&](const CrashImage &image) { found.insert(sectorsOf(image.bytes)); });
    EXPECT_EQ(found, (std::set<std::string>{"aaaa", "abaa", "aaba", "abba", "aaab", "abab", "aabb",
                                            "abbb"}));
}

TEST(CrashImages, SectorsAreThoseOfTheFileNotOfTheWrite) {
    std::set<std::string> found;
    forEachCrashImage(std::string(1024, 'a'), {writeOf(500, 24, 'b')},
                      [&](const CrashImage &image) { found.insert(image.bytes.substr(498, 28)); });
    const std::string first(12, 'b');
    EXPECT_EQ(found, (std::set<std::string>{
                         std::string(28, 'a'), "aa" + first + std::string(14, 'a'),
                         std::string(14, 'a') + first + "aa", "aa" + first + first + "aa"}));
}

TEST(CrashImages, AGrowingFileEndsBehindWhatArrivedOrIsFilledWithZeros) {
    std::set<std::string> found;
    forEachCrashImage(std::string(512, 'a'), {writeOf(512, 1024, 'b')},
                      [&](const CrashImage &image) { found.insert(sectorsOf(image.bytes)); });
    EXPECT_EQ(found, (std::set<std::string>{"a", "a00", "ab", "ab0", "a0b", "abb"}));
}

TEST(CrashImages, ASlotAreaOfFourRecordsHasTwelveSectors) {
    const Images images = imagesOf(std::string(6064, 'a'), {writeOf(80, 5984, 'b')});
    EXPECT_EQ(images.visited, 4096U);
    EXPECT_EQ(images.distinct.size(), 4096U);
}

TEST(CrashImages, SectorsThatAWriteDoesNotChangeGiveNoImages) {
    std::string before(2048, 'a');
    before.replace(512, 512, std::string(512, 'b'));
    const Images images = imagesOf(before, {writeOf(0, 2048, 'b')});
    EXPECT_EQ(images.visited, 8U);
    EXPECT_EQ(images.distinct.size(), 8U);
}

TEST(CrashImages, TruncationsAndSyncsAreWholeOrAbsent) {
    const std::vector<FileEvent> events{{FileEvent::Kind::truncate, 100, {}},
                                        {FileEvent::Kind::sync, 0, {}},
                                        {FileEvent::Kind::truncate, 300, {}}};
    std::vector<std::string> found;
    forEachCrashImage(std::string(200, 'a'), events,
                      [&](const CrashImage &image) { found.push_back(image.bytes); });
    const std::string cut(100, 'a');
    EXPECT_EQ(found, (std::vector<std::string>{std::string(200, 'a'), cut, cut,
                                               cut + std::string(200, '\0')}));
}

TEST(CrashImages, TheSecondWriteIsTornOnlyOnTopOfTheWholeFirst) {
    std::set<std::string> found;
    forEachCrashImage(std::string(1024, 'a'), {writeOf(0, 1024, 'b'), writeOf(0, 1024, 'c')},
                      [&](const CrashImage &image) { found.insert(sectorsOf(image.bytes)); });
    EXPECT_EQ(found, (std::set<std::string>{"aa", "ba", "ab", "bb", "cb", "bc", "cc"}));
}

TEST(FileJournal, NotesWhatHappensToItsFileAndToNoOther) {
    const test_support::ScratchFolder folder;
    const std::string path = folder.file("watched");
    const int other = open(folder.file("other").c_str(), O_RDWR | O_CREAT, 0600);
    test_support::watchFile(path);
    const int fd = open(path.c_str(), O_RDWR | O_CREAT | O_SYNC, 0600);
    ASSERT_GE(fd, 0);
    ASSERT_GE(other, 0);
    EXPECT_TRUE(test_support::watchedFileIsSynchronous());
    ASSERT_EQ(write(other, "no", 2), 2);
    ASSERT_EQ(write(fd, "first", 5), 5);
    ASSERT_EQ(lseek(fd, 3, SEEK_SET), 3);
    ASSERT_EQ(write(fd, "second", 6), 6);
    ASSERT_EQ(ftruncate(fd, 7), 0);
    sync();
    ASSERT_EQ(ftruncate(fd, -1), -1); // a call that fails changes nothing
    const std::vector<FileEvent> events = test_support::takeFileEvents();
    close(fd);
    ASSERT_EQ(write(other, "no", 2), 2);
    close(other);
    EXPECT_TRUE(test_support::takeFileEvents().empty());

    ASSERT_EQ(events.size(), 4U);
    EXPECT_EQ(events[0].offset, 0U);
    EXPECT_EQ(events[0].bytes, "first");
    EXPECT_EQ(events[1].offset, 3U);
    EXPECT_EQ(events[1].bytes, "second");
    EXPECT_EQ(events[2].kind, FileEvent::Kind::truncate);
    EXPECT_EQ(events[2].offset, 7U);
    EXPECT_EQ(events[3].kind, FileEvent::Kind::sync);
    std::string replayed;
    for (const FileEvent &event : events) {
        apply(event, replayed);
    }
    EXPECT_EQ(replayed, "firseco");
    EXPECT_EQ(test_support::readFile(path), replayed);
}

} // namespace
