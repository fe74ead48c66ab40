// evtlogctl evtlog and shell: the library's evtlog command on the configured log, for one line or
// for many.
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include <unistd.h>

#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/interruption.h"
#include "tools/evtlogctl/line_editor.h"
#include "tools/evtlogctl/line_input.h"
#include "tools/evtlogctl/output.h"
#include "zuSaHpi_default_mainlib.h"

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

// Something was left out when the user had enough.
[[nodiscard]] Status statusAtTheEnd() {
    return interrupted() ? Status::findings : Status::done;
}

// A line is carried out while signals come in, and waited for while they are deferred.
[[nodiscard]] bool runWhileAdmitting(const std::string &line) {
    admitInterruptions();
    const bool goesOn = runShellLine(line);
    deferInterruptions();
    return goesOn && !interrupted();
}

} // namespace

Status runEvtlog(const Settings &settings, const std::vector<std::string> &words) {
    const LogSetup setup = configure(settings);
    noteInterruptions();
    silenceWhenInterrupted();
    startLog(setup);
    std::string line(commandWord);
    for (const std::string &word : words) {
        line += " " + word;
    }
    runLine(line);
    return statusAtTheEnd();
}

Status runShell(const Settings &settings) {
    const LogSetup setup = configure(settings);
    noteInterruptions();
    silenceWhenInterrupted();
    startLog(setup);
    deferInterruptions();
    const bool edits = isatty(STDIN_FILENO) != 0;
    if (edits) {
        openLineEditor(std::string(zuSaHpiRoot) + "/evtlogctl_history");
    }
    while (const auto line = edits ? editLine("evtlog> ") : readLine()) {
        if (!runWhileAdmitting(*line)) {
            break;
        }
    }
    if (edits) {
        closeLineEditor();
    }
    return statusAtTheEnd();
}

} // namespace zusahpi::evtlogctl
