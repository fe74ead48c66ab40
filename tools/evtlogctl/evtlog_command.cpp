// evtlogctl evtlog and shell: the library's evtlog command on the configured log, for one line or
// for many.
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>

#include <unistd.h>

#include "mainlib/default_mainlib.h"
#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/interruption.h"
#include "tools/evtlogctl/line_editor.h"
#include "tools/evtlogctl/output.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::string_view commandWord = "evtlog";

// The library goes on with the scan of the line that is begun here, so the line must stay.
void runLine(const std::string &words) {
    std::string line = words;
    // cppcheck-suppress strtokCalled ; the library's interface goes on with its scan
    (void)std::strtok(line.data(), " \t");
    zuSaHpiProcessEventLogCommand(reinterpret_cast<zuSaHpiHandleT>(stdout));
    flushAll(stdout, standardOutput);
}

[[nodiscard]] std::string_view firstWord(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    const std::size_t begin = line.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return line.substr(begin, line.find_first_of(blanks, begin) - begin);
}

void printHelp() {
    runLine(std::string(commandWord)); // without a sub-command: the usage text
    writeAll(
        stdout,
        "In this shell the word \"evtlog\" may be left out. \"help\" prints this text, \"quit\" "
        "or end of file leaves.\n",
        standardOutput);
    flushAll(stdout, standardOutput);
}

// Returns false when the line ends the shell.
[[nodiscard]] bool runShellLine(const std::string &line) {
    const std::string_view word = firstWord(line);
    if (word == "quit" || word == "exit") {
        return false;
    }
    if (word == "help") {
        printHelp();
    } else if (word == commandWord) {
        runLine(line);
    } else if (!word.empty()) {
        runLine(std::string(commandWord) + " " + line);
    }
    return true;
}

} // namespace

Status runEvtlog(const Settings &settings, const std::vector<std::string> &words) {
    startLog(configure(settings));
    std::string line(commandWord);
    for (const std::string &word : words) {
        line += " " + word;
    }
    runLine(line);
    return Status::done;
}

Status runShell(const Settings &settings) {
    startLog(configure(settings));
    noteInterruptions();
    if (isatty(STDIN_FILENO) == 0) {
        for (std::string line; !interrupted() && std::getline(std::cin, line);) {
            if (!runShellLine(line)) {
                break;
            }
        }
        return Status::done;
    }
    openLineEditor(std::string(zuSaHpiRoot) + "/evtlogctl_history");
    while (!interrupted()) {
        const std::optional<std::string> line = editLine("evtlog> ");
        if (!line || !runShellLine(*line)) {
            break;
        }
    }
    closeLineEditor();
    return Status::done;
}

} // namespace zusahpi::evtlogctl
