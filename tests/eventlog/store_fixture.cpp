// The store's test fixture: its scratch root, its records, its look into the log file.

#include "tests/eventlog/store_fixture.h"

#include <cstring>

#include <sys/stat.h>

namespace store_test {
namespace {

// Lives until after the store's exit handler, which removes the lock in it.
const test_support::ScratchFolder &root() {
    static const test_support::ScratchFolder folder;
    return folder;
}

template <typename T>
T at(const std::string &bytes, std::size_t offset) {
    T value{};
    if (offset + sizeof value > bytes.size()) {
        ADD_FAILURE() << "offset " << offset << " is past the file's end";
        return value;
    }
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

template <typename T>
void put(std::string &bytes, std::size_t offset, const T &value) {
    if (bytes.size() < offset + sizeof value) {
        bytes.resize(offset + sizeof value);
    }
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

std::size_t placeOf(std::uint32_t number) {
    return 6064 + (std::size_t{number} - 1) * 1496;
}

} // namespace

EventLogControlBlock controlBlock(std::uint32_t type, std::uint32_t overflowAction,
                                  std::uint32_t size) {
    EventLogControlBlock block;
    std::memset(&block, 0, sizeof block);
    block.size = 208;
    block.magic = 0x17394283;
    block.info.sa.Size = size;
    block.info.sa.UserEventMaxSize = 255;
    block.info.sa.Enabled = 1;
    block.info.sa.OverflowResetable = 1;
    block.info.sa.OverflowAction =
        overflowAction == drop ? SAHPI_EL_OVERFLOW_DROP : SAHPI_EL_OVERFLOW_OVERWRITE;
    block.info.type = type;
    block.info.overflowAction = overflowAction;
    block.info.oldest = none;
    block.info.newest = none;
    block.info.freeHead = none;
    std::strcpy(block.fileName, "log");
    block.fileEnabled = 1;
    return block;
}

EventLogAddRecord event(std::uint8_t seed) {
    EventLogAddRecord record;
    std::memset(&record, seed, sizeof record);
    record.event.EventType = SAHPI_ET_USER;
    record.event.EventDataUnion.UserEvent.UserEventData.DataLength = 255;
    record.rpt.ResourceCapabilities = 0x01010101;
    record.rdr.RdrType = SAHPI_SENSOR_RDR;
    return record;
}

EventLogAddRecord userEvent(std::uint8_t length) {
    EventLogAddRecord record;
    std::memset(&record, 0, sizeof record);
    record.event.EventType = SAHPI_ET_USER;
    SaHpiTextBufferT &data = record.event.EventDataUnion.UserEvent.UserEventData;
    data.DataType = SAHPI_TL_TYPE_TEXT;
    data.DataLength = length;
    std::memset(data.Data, 'x', sizeof data.Data);
    return record;
}

EventLogEntryRecord entryRecord(std::uint32_t id, std::uint8_t seed, std::uint32_t prev,
                                std::uint32_t next) {
    const EventLogAddRecord added = event(seed);
    EventLogEntryRecord record;
    std::memset(&record, 0, sizeof record);
    record.prev = prev;
    record.next = next;
    record.entry.EntryId = id;
    record.entry.Timestamp = 1'000'000'000;
    record.entry.Event = added.event;
    record.rpt = added.rpt;
    record.rdr = added.rdr;
    return record;
}

bool equalBytes(const void *a, const void *b, std::size_t size) {
    return std::memcmp(a, b, size) == 0;
}

std::uint32_t FileImage::u32(std::size_t offset) const {
    return at<std::uint32_t>(bytes, offset);
}
std::int64_t FileImage::i64(std::size_t offset) const {
    return at<std::int64_t>(bytes, offset);
}
std::uint8_t FileImage::u8(std::size_t offset) const {
    return at<std::uint8_t>(bytes, offset);
}
std::uint32_t FileImage::entries() const {
    return u32(0);
}
std::uint32_t FileImage::oldest() const {
    return u32(48);
}
std::uint32_t FileImage::newest() const {
    return u32(52);
}
std::uint32_t FileImage::freeHead() const {
    return u32(56);
}
std::uint32_t FileImage::maxUsed() const {
    return u32(60);
}
std::uint32_t FileImage::updating() const {
    return u32(72);
}
std::uint8_t FileImage::overflowFlag() const {
    return u8(33);
}
EventLogEntryRecord FileImage::entry(std::uint32_t number) const {
    return at<EventLogEntryRecord>(bytes, placeOf(number));
}
EventLogEntryRecord FileImage::slot(std::uint32_t number) const {
    return at<EventLogEntryRecord>(bytes, 80 + number * std::size_t{1496});
}
EventLogInfoRecord FileImage::info() const {
    return at<EventLogInfoRecord>(bytes, 0);
}
void FileImage::setInfo(const EventLogInfoRecord &info) {
    put(bytes, 0, info);
}
void FileImage::setEntry(const EventLogEntryRecord &record) {
    setEntry(record.entry.EntryId, record);
}

void FileImage::setEntry(std::uint32_t number, const EventLogEntryRecord &record) {
    put(bytes, placeOf(number), record);
}
void FileImage::setSlot(std::uint32_t number, const EventLogEntryRecord &record) {
    put(bytes, 80 + number * std::size_t{1496}, record);
}

StoreTest::StoreTest() {
    zuSaHpiRoot = root().path().c_str();
    mkdir((root().path() + "/evtlog").c_str(), 0777);
}

std::string StoreTest::logPath() {
    return root().path() + "/evtlog/log";
}

std::string StoreTest::lockPath() {
    return logPath() + ".lck";
}

FileImage StoreTest::file() {
    return {test_support::readFile(logPath())};
}

void StoreTest::writeLog(const FileImage &image) {
    test_support::writeFile(logPath(), image.bytes);
}

void StoreTest::start(std::uint32_t type, std::uint32_t overflowAction, std::uint32_t size) {
    start(controlBlock(type, overflowAction, size));
}

void StoreTest::start(const EventLogControlBlock &block) {
    EventLogControlBlock copy = block;
    ASSERT_EQ(zuSaHpiEventLogInit(&copy), SA_OK);
}

void StoreTest::add(std::uint8_t seed) {
    const EventLogAddRecord record = event(seed);
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&record, 0), SA_OK);
}

std::vector<int> StoreTest::seeds() {
    std::vector<int> found;
    EventLogEntryRecord record;
    std::uint32_t id = SAHPI_OLDEST_ENTRY;
    while (found.size() < 1000 && zuSaHpiEventLogEntryGet(id, &record) == SA_OK) {
        found.push_back(record.rpt.ResourceTag.Data[0]);
        if (record.next >= 0xFFFFFFFE) {
            break;
        }
        id = record.next;
    }
    return found;
}

std::string StoreTest::diagnostics() {
    std::string text;
    text.swap(test_mainlib::state().diagnostics);
    test_mainlib::state().diagnosticPrints.clear();
    return text;
}

StoreTest::Prints StoreTest::diagnosticPrints() {
    Prints prints;
    prints.swap(test_mainlib::state().diagnosticPrints);
    test_mainlib::state().diagnostics.clear();
    return prints;
}

} // namespace store_test
