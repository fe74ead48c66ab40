// The driver: one workload on one engine, in a process of its own.
//
//   bench_driver ENGINE WORKLOAD CAPACITY COUNT FOLDER [durable] [wraps]
//
// Prints the nanoseconds of the timed part, and the highest resident memory of the process in KiB.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "bench/workloads.h"

namespace bench {

void require(bool success, const char *what, std::string_view detail) {
    if (!success) {
        std::fprintf(stderr, "bench_driver: %s %.*s\n", what, static_cast<int>(detail.size()),
                     detail.data());
        std::exit(EXIT_FAILURE);
    }
}

namespace {

constexpr const Engine *engines[] = {&limitEngine,     &storeEngine, &sqliteJournalEngine,
                                     &sqliteWalEngine, &lmdbEngine,  &leveldbEngine};

const Engine *engineOf(std::string_view name) {
    for (const Engine *engine : engines) {
        if (name == engine->name) {
            return engine;
        }
    }
    return nullptr;
}

long residentKib() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "VmHWM:") {
    }
    long kib = 0;
    status >> kib;
    return kib;
}

std::uint32_t number(const char *text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

} // namespace
} // namespace bench

int main(int argumentCount, char **arguments) {
    using namespace bench;
    require(argumentCount >= 6, "usage: ENGINE WORKLOAD CAPACITY COUNT FOLDER [durable] [wraps]");
    Task task{};
    task.engine = engineOf(arguments[1]);
    require(task.engine != nullptr, "there is no engine", arguments[1]);
    task.setup.capacity = number(arguments[3]);
    task.count = number(arguments[4]);
    task.setup.folder = arguments[5];
    for (int i = 6; i < argumentCount; ++i) {
        const std::string_view flag = arguments[i];
        task.setup.durable = task.setup.durable || flag == "durable";
        task.setup.wraps = task.setup.wraps || flag == "wraps";
    }
    const std::optional<std::int64_t> elapsed = run(arguments[2], task);
    require(elapsed.has_value(), "there is no workload", arguments[2]);
    std::printf("%lld %ld\n", static_cast<long long>(*elapsed), residentKib());
    return EXIT_SUCCESS;
}
