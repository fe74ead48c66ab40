// An image is the log of the last acknowledged operation or of the one under way: exactly that of a
// Linked log, with what was not synced since of others.

#include "tests/blocks/power_failures.h"

#include <algorithm>
#include <stdexcept>

#include <unistd.h>

#include "tests/blocks/device_mapper.h"
#include "tests/blocks/disks.h"

namespace block_test {
namespace {

void writeLog(MappedDevice &logged, const Script &script) {
    memory_disk::letSyncThrough();
    std::string difference;
    store_model::Pair pair = store_model::startPair(logPath, script.settings, difference);
    if (script.settings.type != store_model::Type::linked) {
        sync(); // from here on something is promised
    }
    markMoment(logged, 0);
    for (std::size_t i = 0; i < script.steps.size() && difference.empty(); ++i) {
        difference = carryOut(pair, script.steps[i]);
        if (!difference.empty()) {
            difference = nameOf(script.steps[i]) + ", without any power failure: " + difference;
        }
        markMoment(logged, i + 1);
    }
    memory_disk::exitProcess();
    if (!difference.empty()) {
        throw std::runtime_error(difference);
    }
}

void logBlocks(const FileSystem &system, const Script &script) {
    const std::string disks = std::string(dataDisk) + " " + logDisk;
    MappedDevice logged("logged", {{system.sectors, "log-writes", disks}});
    const Mounted mounted(system, logged.path());
    markMounted(logged);
    writeLog(logged, script);
}

} // namespace

Outcome tryPowerFailures(const Run &run, Defect planted) {
    const Script script = scriptOf(run.settings, run.seed, run.steps);
    const History history = historyOf(script);
    const std::span<const Moment> moments = history.moments;
    makeDisks(run.system);
    plantDefect(planted);
    logBlocks(run.system, script);
    plantDefect(Defect::none);
    return judgeAllImages(run.system, run.settings, moments.size(), [&](std::size_t acknowledged) {
        if (acknowledged == 0) {
            return std::span<const Moment>();
        }
        const std::size_t first = history.durable[acknowledged - 1];
        const std::size_t end = std::min(acknowledged + 1, moments.size());
        return moments.subspan(first, end - first);
    });
}

} // namespace block_test
