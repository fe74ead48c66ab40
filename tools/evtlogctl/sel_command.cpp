// Running the command, and judging what it gave.
#include "tools/evtlogctl/sel_command.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

#include "tools/evtlogctl/child_process.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/output.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t mostOutput = std::size_t{16} << 20U; // bytes
constexpr std::size_t mostRecords = 0xFFFE; // record ids of a SEL: 0 and FFFFh stand for no record
constexpr std::size_t longestDetail = 200;

[[nodiscard]] std::string scratchName() {
    std::error_code error; // the folder of the environment is none
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return (error ? std::filesystem::path("/tmp") : folder) / "evtlogctl-XXXXXX";
}

// An empty file that is gone when the reading is done.
class ScratchFile {
  public:
    ScratchFile() : path_(scratchName()) {
        const int descriptor = mkstemp(path_.data());
        if (descriptor >= 0) {
            (void)close(descriptor); // nothing was written
            return;
        }
        fail(Status::systemRefused,
             "no file for the records can be made: {}; check the folder for temporary files",
             systemError());
    }
    ~ScratchFile() {
        (void)unlink(path_.c_str()); // the command may have removed it
    }
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    [[nodiscard]] const std::string &path() const {
        return path_;
    }

  private:
    std::string path_;
};

// The last line that a command wrote to standard error, fit for a line of ours.
[[nodiscard]] std::string lastLine(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' ')) {
        text.remove_suffix(1);
    }
    text.remove_prefix(text.rfind('\n') + 1); // npos + 1 is 0
    std::string line(text.substr(0, longestDetail));
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '.');
    return line;
}

[[nodiscard]] std::string endOf(const ChildResult &result, const SelCommand &command) {
    switch (result.ending) {
    case Ending::outOfTime:
        return fmt::format("did not end within {} s and was stopped",
                           std::chrono::duration<double>(command.timeLimit).count());
    case Ending::outOfBounds:
        return fmt::format("printed more than {} MiB and was stopped", mostOutput >> 20U);
    case Ending::killed:
        return fmt::format("was killed by signal {}", result.code);
    default:
        return fmt::format("ended with exit status {}", result.code);
    }
}

void requireSuccess(const SelCommand &command, const ChildResult &result) {
    if (result.ending == Ending::exited && result.code == 0) {
        return;
    }
    const std::string detail = lastLine(result.errors);
    fail(Status::systemRefused, "{} {}{}{}; check the controller, it is asked again and again",
         nameOf(command), endOf(result, command), detail.empty() ? "" : ": ", detail);
}

// Half a reading must not pass for a whole one.
[[nodiscard]] std::vector<sel::Record> recordsIn(const SelCommand &command,
                                                 const std::string &output) {
    sel::Input input = sel::readRecords(output, command.form);
    if (!input.problems.empty()) {
        const sel::Problem &problem = input.problems.front();
        fail(Status::findings, "{} gave no whole SEL: at offset {}: {}; nothing of it was used",
             nameOf(command), problem.offset, problem.what);
    }
    if (input.records.empty() && output.find_first_not_of(" \t\r\n") != std::string::npos) {
        fail(Status::findings,
             "{} gave no SEL: no line holds the sixteen bytes of a record; check the command",
             nameOf(command));
    }
    if (input.records.size() > mostRecords) {
        fail(Status::findings,
             "{} gave no SEL: {} records are more than one can hold; check the command",
             nameOf(command), input.records.size());
    }
    return std::move(input.records);
}

[[nodiscard]] std::string readBounded(const SelCommand &command, const std::string &file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        fail(Status::findings, "{} removed the file for the records; check the command",
             nameOf(command));
    }
    if (status.st_size > static_cast<off_t>(mostOutput)) {
        fail(Status::findings, "{} gave no SEL: it wrote more than {} MiB; check the command",
             nameOf(command), mostOutput >> 20U);
    }
    return readAll(file);
}

} // namespace

const std::string &nameOf(const SelCommand &command) {
    return command.words.front();
}

std::optional<std::vector<sel::Record>> readSel(SelCommand &command) {
    std::optional<ScratchFile> file;
    std::vector<std::string> words = command.words;
    if (std::find(words.begin(), words.end(), fileWord) != words.end()) {
        file.emplace();
        std::replace(words.begin(), words.end(), std::string(fileWord), file->path());
    }
    const ChildResult result = runCommand(words, {.time = command.timeLimit, .output = mostOutput});
    if (result.ending == Ending::interrupted) {
        return std::nullopt;
    }
    if (result.ending == Ending::notStarted) {
        fail(Status::systemRefused, "{} cannot be run: {}; check the command", nameOf(command),
             std::strerror(result.code));
    }
    command.ran = true;
    requireSuccess(command, result);
    return recordsIn(command, file ? readBounded(command, file->path()) : result.output);
}

} // namespace zusahpi::evtlogctl
