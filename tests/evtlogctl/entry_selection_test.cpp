// Goal: what is chosen for a listing is what its options ask for, and what is lost of it on the way
// is told.
#include "tools/evtlogctl/entry_selection.h"

#include <gtest/gtest.h>

#include "tests/evtlogctl/sample_logs.h"
#include "tests/support/child.h"
#include "tests/support/files.h"

namespace {

using namespace zusahpi::evtlogctl;
using test_support::inChild;
using test_support::ScratchFolder;

void addFromTo(const std::string &path, std::uint32_t first, std::uint32_t last) {
    inChild([&] {
        sample_logs::startStore(path, ZUSAHPI_EL_TYPE_CIRCULAR, 20, ZUSAHPI_EL_WRAP);
        for (std::uint32_t serial = first; serial <= last; ++serial) {
            sample_logs::add(serial);
        }
    });
}

// Another program writes over entries after it is known which ones the log has, and before it is
// looked which of them fit.
TEST(EntrySelection, EntriesOverwrittenBeforeTheyAreChosenAreTold) {
    const ScratchFolder folder;
    const std::string path = folder.file("log");
    addFromTo(path, 1, 20);
    const LogFile file(path);
    Snapshot snapshot = readLog(file);
    addFromTo(path, 21, 27);
    ListOptions options;
    options.newest = 100;
    options.filter.since = 1; // all fit
    (void)selectEntries(file, snapshot, options);
    EXPECT_EQ(snapshot.entries.size(), 13U);
    addFromTo(path, 28, 30);
    SnapshotReader reader(file, snapshot);
    std::size_t read = 0;
    while (reader.next() != nullptr) {
        ++read;
    }
    EXPECT_EQ(read, 10U);
    testing::internal::CaptureStderr();
    EXPECT_EQ(reportReading(file, snapshot, reader, "are listed"), Status::done);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "evtlogctl: " + path +
                  ": another program overwrote 10 entries while the log was "
                  "read; they are left out\n");
}

} // namespace
