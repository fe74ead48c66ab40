// The line editor where libedit is not there: the terminal's own editing, no history.
#include <cstdio>

#include "tools/evtlogctl/line_editor.h"
#include "tools/evtlogctl/line_input.h"

namespace zusahpi::evtlogctl {

void openLineEditor(const std::string &) {
}

std::optional<std::string> editLine(const char *prompt) {
    std::fputs(prompt, stdout);
    std::fflush(stdout);
    return readLine();
}

void closeLineEditor() {
}

} // namespace zusahpi::evtlogctl
