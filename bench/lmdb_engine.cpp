// LMDB, integer keys; MDB_NOSYNC where adds are not durable.

#include <cstring>

#include <lmdb.h>

#include "bench/engine.h"

namespace bench {
namespace {

struct Lmdb {
    MDB_env *environment;
    MDB_dbi database;
    MDB_txn *reader;
    bool wraps;
    unsigned int capacity;
    unsigned int added;
};

Lmdb lmdb;

constexpr std::size_t mostBytes = std::size_t{16} << 30; // of the map; sparse

void check(int result) {
    require(result == MDB_SUCCESS, "lmdb", mdb_strerror(result));
}

MDB_val keyOf(unsigned int &number) {
    return {sizeof number, &number};
}

unsigned int highestNumber(MDB_txn *transaction) {
    MDB_cursor *cursor = nullptr;
    check(mdb_cursor_open(transaction, lmdb.database, &cursor));
    MDB_val key{};
    MDB_val value{};
    unsigned int number = 0;
    if (mdb_cursor_get(cursor, &key, &value, MDB_LAST) == MDB_SUCCESS) {
        std::memcpy(&number, key.mv_data, sizeof number);
    }
    mdb_cursor_close(cursor);
    return number;
}

void open(const Setup &setup) {
    lmdb = {};
    lmdb.wraps = setup.wraps;
    lmdb.capacity = setup.capacity;
    check(mdb_env_create(&lmdb.environment));
    check(mdb_env_set_mapsize(lmdb.environment, mostBytes));
    check(
        mdb_env_open(lmdb.environment, setup.folder.c_str(), setup.durable ? 0 : MDB_NOSYNC, 0600));
    MDB_txn *transaction = nullptr;
    check(mdb_txn_begin(lmdb.environment, nullptr, 0, &transaction));
    check(mdb_dbi_open(transaction, nullptr, MDB_INTEGERKEY | MDB_CREATE, &lmdb.database));
    lmdb.added = highestNumber(transaction);
    check(mdb_txn_commit(transaction));
}

void add(const Record &record) {
    unsigned int number = ++lmdb.added;
    MDB_txn *transaction = nullptr;
    check(mdb_txn_begin(lmdb.environment, nullptr, 0, &transaction));
    if (lmdb.wraps && number > lmdb.capacity) {
        unsigned int oldest = number - lmdb.capacity;
        MDB_val key = keyOf(oldest);
        check(mdb_del(transaction, lmdb.database, &key, nullptr));
    }
    MDB_val key = keyOf(number);
    Record copy = record;
    MDB_val value = {sizeof copy, &copy};
    check(mdb_put(transaction, lmdb.database, &key, &value, MDB_APPEND));
    check(mdb_txn_commit(transaction));
}

void read(std::uint32_t number, Record &record) {
    if (lmdb.reader == nullptr) {
        check(mdb_txn_begin(lmdb.environment, nullptr, MDB_RDONLY, &lmdb.reader));
    } else {
        check(mdb_txn_renew(lmdb.reader));
    }
    unsigned int keyNumber = number;
    MDB_val key = keyOf(keyNumber);
    MDB_val value{};
    check(mdb_get(lmdb.reader, lmdb.database, &key, &value));
    std::memcpy(&record, value.mv_data, sizeof record);
    mdb_txn_reset(lmdb.reader);
}

void readNewest(Record &record) {
    read(lmdb.added, record);
}

void close() {
    if (lmdb.reader != nullptr) {
        mdb_txn_abort(lmdb.reader);
    }
    mdb_env_close(lmdb.environment);
}

} // namespace

const Engine lmdbEngine = {"LMDB", open, add, read, readNewest, close};

} // namespace bench
