// A disk in memory: files whose path begins with `folder` exist only here, and so do the exit
// handlers of the process that uses them. Both are plain values, so that a test can go back to any
// moment of a log's life, and none of it waits for a disk. The C library's calls are caught at its
// border; nothing in the code under test takes part.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace memory_disk {

inline constexpr char folder[] = "/memory/";

struct File {
    std::string bytes;
    int names = 0;
    int descriptors = 0;

    bool operator==(const File &) const = default;
};

struct Descriptor {
    int file = -1; // -1: closed
    std::size_t position = 0;
};

struct Machine {
    std::map<std::string, int> names; // path to index of `files`
    std::vector<File> files;
    std::vector<Descriptor> descriptors;
    std::vector<void (*)()> exitHandlers;
    bool catchExitHandlers = false;
};

Machine &machine();

// From then on the process's sync() reaches the machine's own disks, too: for a log that lies on
// one.
void letSyncThrough();

// The bytes of a file that must exist.
const std::string &contents(const std::string &path);

// The process leaves through exit(): its exit handlers run, then its descriptors are closed.
void exitProcess();

// The process is killed: its descriptors are closed, nothing else happens.
void killProcess();

} // namespace memory_disk
