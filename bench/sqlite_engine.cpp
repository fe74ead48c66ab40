// SQLite, a table with the number as its row id. Once with its rollback journal (the default) and
// once with the write-ahead log; durable is synchronous=FULL, otherwise it is OFF.

#include <sqlite3.h>

#include "bench/engine.h"

namespace bench {
namespace {

struct Sqlite {
    sqlite3 *database;
    sqlite3_stmt *begin;
    sqlite3_stmt *commit;
    sqlite3_stmt *insert;
    sqlite3_stmt *remove;
    sqlite3_stmt *select;
    bool wraps;
    std::uint32_t capacity;
    std::uint32_t added;
};

Sqlite sqlite;

void check(bool success) {
    require(success, "sqlite", sqlite3_errmsg(sqlite.database));
}

void execute(const std::string &statement) {
    check(sqlite3_exec(sqlite.database, statement.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
}

sqlite3_stmt *prepare(const char *statement) {
    sqlite3_stmt *prepared = nullptr;
    check(sqlite3_prepare_v3(sqlite.database, statement, -1, SQLITE_PREPARE_PERSISTENT, &prepared,
                             nullptr) == SQLITE_OK);
    return prepared;
}

void step(sqlite3_stmt *statement) {
    check(sqlite3_step(statement) == SQLITE_DONE);
    sqlite3_reset(statement);
}

void openAs(const Setup &setup, const char *journal) {
    sqlite = {};
    sqlite.wraps = setup.wraps;
    sqlite.capacity = setup.capacity;
    check(sqlite3_open((setup.folder + "/sqlite").c_str(), &sqlite.database) == SQLITE_OK);
    execute(std::string("PRAGMA journal_mode=") + journal);
    execute(setup.durable ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=OFF");
    execute("CREATE TABLE IF NOT EXISTS log(number INTEGER PRIMARY KEY, record BLOB)");
    sqlite.begin = prepare("BEGIN");
    sqlite.commit = prepare("COMMIT");
    sqlite.insert = prepare("INSERT INTO log VALUES(?, ?)");
    sqlite.remove = prepare("DELETE FROM log WHERE number = ?");
    sqlite.select = prepare("SELECT record FROM log WHERE number = ?");
    sqlite3_stmt *highest = prepare("SELECT coalesce(max(number), 0) FROM log");
    check(sqlite3_step(highest) == SQLITE_ROW);
    sqlite.added = static_cast<std::uint32_t>(sqlite3_column_int64(highest, 0));
    sqlite3_finalize(highest);
}

void openJournal(const Setup &setup) {
    openAs(setup, "DELETE");
}

void openWal(const Setup &setup) {
    openAs(setup, "WAL");
}

void add(const Record &record) {
    const std::uint32_t number = ++sqlite.added;
    const bool full = sqlite.wraps && number > sqlite.capacity;
    if (full) {
        step(sqlite.begin);
        sqlite3_bind_int64(sqlite.remove, 1, number - sqlite.capacity);
        step(sqlite.remove);
    }
    sqlite3_bind_int64(sqlite.insert, 1, number);
    sqlite3_bind_blob(sqlite.insert, 2, &record, sizeof record, SQLITE_STATIC);
    step(sqlite.insert);
    if (full) {
        step(sqlite.commit);
    }
}

void read(std::uint32_t number, Record &record) {
    sqlite3_bind_int64(sqlite.select, 1, number);
    check(sqlite3_step(sqlite.select) == SQLITE_ROW);
    check(sqlite3_column_bytes(sqlite.select, 0) == sizeof record);
    record = *static_cast<const Record *>(sqlite3_column_blob(sqlite.select, 0));
    sqlite3_reset(sqlite.select);
}

void readNewest(Record &record) {
    read(sqlite.added, record);
}

void close() {
    for (sqlite3_stmt *statement :
         {sqlite.begin, sqlite.commit, sqlite.insert, sqlite.remove, sqlite.select}) {
        sqlite3_finalize(statement);
    }
    check(sqlite3_close(sqlite.database) == SQLITE_OK);
}

} // namespace

const Engine sqliteJournalEngine = {"SQLite journal", openJournal, add, read, readNewest, close};
const Engine sqliteWalEngine = {"SQLite WAL", openWal, add, read, readNewest, close};

} // namespace bench
