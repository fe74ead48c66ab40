// What a file system does on its disk for one add to a Linked log.
#pragma once

#include <string>

#include "tests/blocks/file_systems.h"

namespace block_test {

// Prints the medians of some adds to a log that grows and of some to a full one that wraps.
// `times` is how the file system is mounted: "relatime", "lazytime" or "noatime".
void countBlocks(const FileSystem &system, const std::string &times);

} // namespace block_test
