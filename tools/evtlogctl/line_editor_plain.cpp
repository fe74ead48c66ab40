// The line editor where libedit is not there: the terminal's own editing, no history.
#include <cstdio>
#include <iostream>

#include "tools/evtlogctl/line_editor.h"

namespace zusahpi::evtlogctl {

void openLineEditor(const std::string &) {
}

std::optional<std::string> editLine(const char *prompt) {
    std::fputs(prompt, stdout);
    std::fflush(stdout);
    std::string line;
    if (!std::getline(std::cin, line)) {
        return std::nullopt;
    }
    return line;
}

void closeLineEditor() {
}

} // namespace zusahpi::evtlogctl
