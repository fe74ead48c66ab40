// Where a log file lies: a name that begins with "/" or "./" is used as it stands, any other is
// placed in the log folder of the installation root.
#pragma once

#include <cstddef>
#include <cstring>

namespace zusahpi::eventlog {

// Between the root and a plain name.
inline constexpr char logFolder[] = "/evtlog/";
inline constexpr std::size_t logFolderLength = sizeof logFolder - 1;

// A root and a plain name together have at most so many characters.
inline constexpr std::size_t longestRootAndName = 98;

[[nodiscard]] inline bool usedAsItStands(const char *name) {
    return name[0] == '/' || std::strncmp(name, "./", 2) == 0;
}

} // namespace zusahpi::eventlog
