// Standard output, and whole files as input.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace zusahpi::evtlogctl {

// Throws Failure when not everything arrives, now or since the stream was opened: a full disk must
// not look like success. A pipe that nobody reads any more is a Failure without words.
void writeAll(std::FILE *to, std::string_view bytes, std::string_view name);
void flushAll(std::FILE *to, std::string_view name);

inline constexpr const char *standardOutput = "standard output";

// All bytes of a file, or of standard input for "-". Throws Failure.
[[nodiscard]] std::string readAll(const std::string &file);

} // namespace zusahpi::evtlogctl
