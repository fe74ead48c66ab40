// The line editor on libedit.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <sstream>

#include <editline/readline.h>
#include <unistd.h>

#include "tools/evtlogctl/line_editor.h"
#include "tools/evtlogctl/line_input.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr int longestHistory = 500;

struct EditorState {
    std::string historyFile;
    std::vector<std::string> matches; // of the completion under way
};

EditorState &editor() {
    static EditorState instance;
    return instance;
}

// Called again and again with a rising number until it returns null.
char *nextMatch(const char *, int number) {
    const std::vector<std::string> &matches = editor().matches;
    const auto index = static_cast<std::size_t>(number);
    return index < matches.size() ? strdup(matches[index].c_str()) : nullptr;
}

char **complete(const char *typed, int start, int) {
    std::istringstream words(std::string(rl_line_buffer, static_cast<std::size_t>(start)));
    std::vector<std::string> before;
    for (std::string word; words >> word;) {
        before.push_back(word);
    }
    editor().matches = completions(before, typed);
    rl_attempted_completion_over = 1; // file names are no candidates
    static int number;
    number = 0;
    return rl_completion_matches(typed,
                                 [](const char *text, int) { return nextMatch(text, number++); });
}

// The editor's way to a character, in the locale's encoding: bytes that are none are passed over. A
// signal ends the line, and with it the shell.
int nextCharacter(FILE *) {
    std::mbstate_t state{};
    char byte = 0;
    while (awaitInput() && read(STDIN_FILENO, &byte, 1) == 1) {
        wchar_t character = 0;
        const std::size_t length = std::mbrtowc(&character, &byte, 1, &state);
        constexpr auto unfinished = static_cast<std::size_t>(-2);
        if (length < unfinished) {
            return static_cast<int>(character);
        }
        if (length > unfinished) {
            state = {};
        }
    }
    return EOF;
}

} // namespace

void openLineEditor(const std::string &historyFile) {
    (void)std::setlocale(LC_CTYPE, ""); // in the locale "C" there are no other letters
    editor().historyFile = historyFile;
    rl_attempted_completion_function = complete;
    rl_getc_function = nextCharacter;
    using_history();
    stifle_history(longestHistory);
    (void)read_history(historyFile.c_str()); // there is none at first
}

std::optional<std::string> editLine(const char *prompt) {
    const std::unique_ptr<char, decltype(&std::free)> line(readline(prompt), std::free);
    if (line == nullptr) {
        (void)std::fputc('\n', stdout);
        return std::nullopt;
    }
    if (*line != '\0') {
        add_history(line.get());
    }
    return std::string(line.get());
}

void closeLineEditor() {
    (void)write_history(editor().historyFile.c_str());
}

} // namespace zusahpi::evtlogctl
