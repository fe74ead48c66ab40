// The names of the syslog levels, as the configuration file and the stream form of syslog lines
// write them. The index is the level.
#pragma once

#include <array>

namespace zusahpi::mainlib {

inline constexpr std::array<const char *, 8> syslogLevelNames = {
    "emerg", "alert", "crit", "err", "warning", "notice", "info", "debug"};

} // namespace zusahpi::mainlib
