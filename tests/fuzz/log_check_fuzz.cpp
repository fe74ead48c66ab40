// Any file checked as a log, and its entries saved to a new one. What the checker says must agree
// with the other readers: a log without damage is listed without damage, a start succeeds where it
// says so, and a salvaged log has nothing wrong.

#include <string>
#include <vector>

#include "tests/fuzz/harness.h"
#include "tests/fuzz/running_log.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_check.h"
#include "tools/evtlogctl/log_reader.h"
#include "tools/evtlogctl/salvage.h"

namespace {

using namespace zusahpi::evtlogctl;

void requireLines(const std::string &text) {
    for (const char letter : text) {
        fuzz::require((letter >= ' ' && letter <= '~') || letter == '\n', "findings are printable");
    }
}

void requireSoundSalvage(const LogFile &file, const CheckedLog &log) {
    const std::vector<std::uint32_t> numbers = salvageable(log);
    const std::string path = fuzz::salvagePath();
    writeSalvage(file, log, numbers, path);
    CheckedLog saved;
    checkLog(LogFile(path), saved);
    fuzz::require(saved.findings.damages == 0, "a salvaged log has no damage");
    fuzz::require(saved.info.sa.Entries == numbers.size(), "what can be saved is saved");
    fuzz::removeSalvage();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    fuzz::putLogFile({data, size});
    const std::string path = fuzz::logPath();
    CheckedLog log;
    {
        const LogFile file(path);
        checkLog(file, log);
        requireLines(linesOf(log.findings));
        if (log.readable) {
            requireSoundSalvage(file, log);
        }
    }
    if (log.readable && log.findings.damages == 0) {
        fuzz::require(readLog(LogFile(path)).damage.empty(),
                      "a log without damage is listed whole");
    }
    if (log.readable && log.info.type < fuzz::logTypes) {
        const EventLogInfoRecord &info = log.info;
        const StartObstacle obstacle = startObstacle(path);
        const bool expected =
            obstacle == StartObstacle::none || obstacle == StartObstacle::waitingUpdate;
        fuzz::require(fuzz::startLog(fuzz::controlBlock(info.type, info.overflowAction,
                                                        info.sa.Size)) == expected,
                      "a start succeeds where the checker says so");
    }
    fuzz::discardLog();
    return 0;
}
