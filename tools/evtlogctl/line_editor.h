// Lines from a terminal: with editing, history and completion where libedit is there, as they are
// typed where not.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zusahpi::evtlogctl {

// Reads the history of earlier runs. A file that is not there yet is an empty history.
void openLineEditor(const std::string &historyFile);

// The next line, without its newline; empty at end of file.
[[nodiscard]] std::optional<std::string> editLine(const char *prompt);

// Writes the history. A history that cannot be written is forgotten: it is a convenience.
void closeLineEditor();

// What may follow `before` (the words in front of the one that is typed) and begins with `typed`.
[[nodiscard]] std::vector<std::string> completions(const std::vector<std::string> &before,
                                                   const std::string &typed);

} // namespace zusahpi::evtlogctl
