// LevelDB, the number as a big-endian key; WriteOptions::sync where adds are durable.

#include <cstring>
#include <memory>

#include <leveldb/db.h>
#include <leveldb/write_batch.h>

#include "bench/engine.h"

namespace bench {
namespace {

struct LevelDb {
    std::unique_ptr<leveldb::DB> database;
    leveldb::WriteOptions options;
    bool wraps = false;
    std::uint32_t capacity = 0;
    std::uint32_t added = 0;
};

LevelDb level;

void check(const leveldb::Status &status) {
    require(status.ok(), "leveldb", status.ToString());
}

std::string keyOf(std::uint32_t number) {
    const std::uint32_t bigEndian = __builtin_bswap32(number);
    return {reinterpret_cast<const char *>(&bigEndian), sizeof bigEndian};
}

leveldb::Slice sliceOf(const Record &record) {
    return {reinterpret_cast<const char *>(&record), sizeof record};
}

std::uint32_t highestNumber() {
    const std::unique_ptr<leveldb::Iterator> last(level.database->NewIterator({}));
    last->SeekToLast();
    std::uint32_t bigEndian = 0;
    if (last->Valid()) {
        std::memcpy(&bigEndian, last->key().data(), sizeof bigEndian);
    }
    return __builtin_bswap32(bigEndian);
}

void open(const Setup &setup) {
    leveldb::Options options;
    options.create_if_missing = true;
    options.compression = leveldb::kNoCompression; // the others store the bytes as they are, too
    leveldb::DB *opened = nullptr;
    check(leveldb::DB::Open(options, setup.folder + "/leveldb", &opened));
    level.database.reset(opened);
    level.options.sync = setup.durable;
    level.wraps = setup.wraps;
    level.capacity = setup.capacity;
    level.added = highestNumber();
}

void add(const Record &record) {
    const std::uint32_t number = ++level.added;
    leveldb::WriteBatch batch;
    if (level.wraps && number > level.capacity) {
        batch.Delete(keyOf(number - level.capacity));
    }
    batch.Put(keyOf(number), sliceOf(record));
    check(level.database->Write(level.options, &batch));
}

void read(std::uint32_t number, Record &record) {
    std::string value;
    check(level.database->Get({}, keyOf(number), &value));
    require(value.size() == sizeof record, "leveldb", "a record of another size");
    std::memcpy(&record, value.data(), sizeof record);
}

void readNewest(Record &record) {
    read(level.added, record);
}

void close() {
    level.database.reset();
}

} // namespace

const Engine leveldbEngine = {"LevelDB", open, add, read, readNewest, close};

} // namespace bench
