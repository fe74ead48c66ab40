// Keeps a journal of what happens to one file: every write with its bytes, every truncation, every
// sync, in order. Fed by the calls of faults.cpp; the code under test takes no part.
//
// Invariant: the file as it was when the journal began, with the events done to it one after the
// other, is the file as it is now.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <sys/types.h>

namespace test_support {

struct FileEvent {
    enum class Kind { write, truncate, sync };

    Kind kind = Kind::sync;
    std::size_t offset = 0; // of a write; the new length of a truncation
    std::string bytes;      // of a write
};

// Starts the journal of the file that is opened next under `path`.
void watchFile(const std::string &path);

// The events since the last call, or since the file was opened.
std::vector<FileEvent> takeFileEvents();

// Whether the file was opened so that each write is on the disk before it returns.
bool watchedFileIsSynchronous();

// Called by the calls of faults.cpp once they have succeeded.
void journalOpen(const char *path, int flags, int fd);
void journalClose(int fd);
void journalWrite(int fd, off_t endOfWrite, const void *bytes, ssize_t count);
void journalTruncate(int fd, off_t length);
void journalSync();

} // namespace test_support
