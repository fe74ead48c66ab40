// Reading: which entries are present, what their neighbours are, and the records stored with them.

#include "eventlog/retrieval.h"

#include <cstring>

#include "tests/eventlog/store_fixture.h"

using namespace store_test;

namespace {

class Retrieval : public StoreTest {
  protected:
    static EventLogEntryRecord get(std::uint32_t id) {
        EventLogEntryRecord record;
        std::memset(&record, 0xEE, sizeof record);
        EXPECT_EQ(zuSaHpiEventLogEntryGet(id, &record), SA_OK) << id;
        return record;
    }
    static SaErrorT result(std::uint32_t id) {
        EventLogEntryRecord record;
        return zuSaHpiEventLogEntryGet(id, &record);
    }
};

TEST_F(Retrieval, EmptyLogHasNoEnds) {
    start(simple, drop, 3);
    EXPECT_EQ(result(SAHPI_OLDEST_ENTRY), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(result(SAHPI_NEWEST_ENTRY), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(result(1), SA_ERR_HPI_NOT_PRESENT);
}

TEST_F(Retrieval, BeforeInitialisationThereIsNoEntry) {
    EXPECT_EQ(result(SAHPI_OLDEST_ENTRY), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(result(1), SA_ERR_HPI_NOT_PRESENT);
}

TEST_F(Retrieval, SimpleNeighboursFollowFromTheNumber) {
    start(simple, drop, 5);
    add(1);
    add(2);
    add(3);
    EXPECT_EQ(get(1).prev, 0xFFFFFFFEU);
    EXPECT_EQ(get(1).next, 2U);
    EXPECT_EQ(get(2).prev, 1U);
    EXPECT_EQ(get(2).next, 3U);
    EXPECT_EQ(get(3).prev, 2U);
    EXPECT_EQ(get(3).next, 0xFFFFFFFEU);
    EXPECT_EQ(get(SAHPI_OLDEST_ENTRY).entry.EntryId, 1U);
    EXPECT_EQ(get(SAHPI_NEWEST_ENTRY).entry.EntryId, 3U);
    EXPECT_EQ(result(4), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(file().entry(1).prev, none); // as written
}

TEST_F(Retrieval, CircularNeighboursWrapAtMaxUsedAndTheGapIsNotPresent) {
    FileImage image;
    EventLogInfoRecord info = controlBlock(circular, wrap, 10).info; // Size above maxUsed
    info.sa.Entries = 4;
    info.oldest = 4;
    info.newest = 2;
    info.maxUsed = 5;
    image.setInfo(info);
    image.bytes.resize(6064);
    for (std::uint32_t number = 1; number <= 5; ++number) {
        image.setEntry(entryRecord(number, static_cast<std::uint8_t>(number)));
    }
    writeLog(image);
    start(circular, wrap, 10);
    EXPECT_EQ(get(5).next, 1U);
    EXPECT_EQ(get(1).prev, 5U);
    EXPECT_EQ(get(1).next, 2U);
    EXPECT_EQ(get(4).prev, 0xFFFFFFFEU);
    EXPECT_EQ(get(4).next, 5U);
    EXPECT_EQ(get(2).next, 0xFFFFFFFEU);
    EXPECT_EQ(result(3), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(result(6), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(seeds(), (std::vector<int>{4, 5, 1, 2}));
}

TEST_F(Retrieval, CircularWithoutWrapHasNothingBelowItsOldest) {
    start(circular, wrap, 5);
    add(1);
    add(2);
    add(3);
    ASSERT_EQ(zuSaHpiEventLogEntryDel(SAHPI_OLDEST_ENTRY, 0), SA_OK);
    EXPECT_EQ(result(1), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(get(2).prev, 0xFFFFFFFEU);
    EXPECT_EQ(get(2).next, 3U);
}

TEST_F(Retrieval, LinkedReturnsItsStoredLinks) {
    FileImage image;
    EventLogInfoRecord info = controlBlock(linked, wrap, 10).info;
    info.sa.Entries = 1;
    info.oldest = 7;
    info.newest = 7;
    info.maxUsed = 7;
    image.setInfo(info);
    image.setEntry(entryRecord(7, 9));
    writeLog(image);
    start(linked, wrap, 10);
    EXPECT_EQ(get(7).prev, none);
    EXPECT_EQ(get(7).next, none);
}

TEST_F(Retrieval, DeletedLinkedEntryComesBackAsNotPresentWithItsRecord) {
    start(linked, wrap, 3);
    add(1);
    add(2);
    ASSERT_EQ(zuSaHpiEventLogEntryDel(1, 0), SA_OK);
    EventLogEntryRecord record;
    EXPECT_EQ(zuSaHpiEventLogEntryGet(1, &record), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(record.deleted, 1U);
    EXPECT_EQ(record.entry.EntryId, 1U);
}

TEST_F(Retrieval, NumbersCompareUnsigned) {
    start(linked, wrap, 3);
    add(1);
    EXPECT_EQ(result(0x80000000), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(result(0xFFFFFFFE), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(diagnostics(), "");
}

TEST_F(Retrieval, NotPresentLeavesTheOutputAlone) {
    start(linked, wrap, 3);
    EventLogEntryRecord record;
    EventLogEntryRecord before;
    std::memset(&record, 0xEE, sizeof record);
    std::memset(&before, 0xEE, sizeof before);
    EXPECT_EQ(zuSaHpiEventLogEntryGet(1, &record), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_TRUE(equalBytes(&record, &before, sizeof record));
}

TEST_F(Retrieval, RptEntryAndRdrAreReadWhenTheyAreThere) {
    start(simple, drop, 5);
    EventLogAddRecord added = event(0x33);
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&added, 0), SA_OK);
    SaHpiRptEntryT rpt;
    SaHpiRdrT rdr;
    ASSERT_EQ(zuSaHpiEventLogEntRptGet(1, &rpt), SA_OK);
    EXPECT_TRUE(equalBytes(&rpt, &added.rpt, 448));
    ASSERT_EQ(zuSaHpiEventLogEntRdrGet(SAHPI_NEWEST_ENTRY, &rdr), SA_OK);
    EXPECT_TRUE(equalBytes(&rdr, &added.rdr, 720));
}

TEST_F(Retrieval, EntryWithoutRptEntryOrRdrHasNone) {
    start(simple, drop, 5);
    EventLogAddRecord added = event(0x33);
    added.rpt.ResourceCapabilities = 0;
    added.rdr.RdrType = SAHPI_NO_RECORD;
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&added, 0), SA_OK);
    SaHpiRptEntryT rpt;
    SaHpiRdrT rdr;
    std::memset(&rpt, 0x44, sizeof rpt);
    EXPECT_EQ(zuSaHpiEventLogEntRptGet(1, &rpt), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(rpt.EntryId, 0x44444444U);
    EXPECT_EQ(zuSaHpiEventLogEntRdrGet(1, &rdr), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(zuSaHpiEventLogEntRptGet(2, &rpt), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(zuSaHpiEventLogEntRdrGet(2, &rdr), SA_ERR_HPI_NOT_PRESENT);
    get(1);
}

// Whatever the block says that a new log holds: there is no file to read it from.
TEST_F(Retrieval, WithoutFileNothingIsPresent) {
    EventLogControlBlock block = controlBlock(linked, wrap, 3);
    block.fileEnabled = 0;
    block.info.maxUsed = 2;
    block.info.oldest = 1;
    block.info.newest = 2;
    start(block);
    test_support::recordCalls();
    for (const SaHpiEventLogEntryIdT id : {SAHPI_NEWEST_ENTRY, SAHPI_OLDEST_ENTRY, 1U, 2U, 3U}) {
        EXPECT_EQ(result(id), SA_ERR_HPI_NOT_PRESENT) << id;
    }
    EXPECT_EQ(test_support::recordedCalls(), std::vector<std::string>{});
}

// A file whose ends or links are damaged is input like any other.
TEST_F(Retrieval, DamagedEndsAreReportedNotFollowed) {
    FileImage image;
    EventLogInfoRecord info = controlBlock(linked, wrap, 10).info;
    info.sa.Entries = 1;
    info.oldest = 0;
    info.newest = 500;
    info.maxUsed = 1;
    image.setInfo(info);
    image.setEntry(entryRecord(1, 1));
    writeLog(image);
    start(linked, wrap, 10);
    EXPECT_EQ(result(SAHPI_OLDEST_ENTRY), SA_ERR_HPI_NOT_PRESENT);
    EXPECT_EQ(result(SAHPI_NEWEST_ENTRY), SA_ERR_HPI_NO_RESPONSE);
    EXPECT_EQ(diagnostics(), "Read of logfile entry # 500 read only 0 bytes\n");
}

} // namespace
