// Making scripts up, and carrying them out.

#include "tests/blocks/workload.h"

#include <csignal>
#include <random>
#include <stdexcept>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace block_test {
namespace {

using store_model::Kind;
using store_model::Operation;
using store_model::Pair;
using store_model::Type;

constexpr rlim_t entriesStart = 6064;
constexpr char pathInMemory[] = "/memory/log";

bool keepsItsFile(const Operation &operation, Type type) {
    switch (operation.kind) {
    case Kind::runWithoutFile:
    case Kind::changeType:
    case Kind::read:
        return false;
    case Kind::protect:
        return type != Type::linked; // it has no meaning for others
    default:
        return true;
    }
}

Operation randomOperation(std::mt19937 &random, Type type) {
    Operation operation;
    do {
        operation = store_model::decode(static_cast<std::uint32_t>(random() % store_model::codes));
    } while (!keepsItsFile(operation, type));
    return operation;
}

// The first steps fill the log; later ones are random, but for some that would come too seldom.
Operation operationAt(std::uint32_t place, const store_model::Settings &settings,
                      std::mt19937 &random) {
    const auto argument = static_cast<std::uint32_t>(random() % 1024);
    if (place < settings.size + 2) {
        return {Kind::add, argument};
    }
    if (place % 31 == 30) {
        return {Kind::clear, 0};
    }
    if (place % 17 == 16) {
        return {Kind::restart, 0};
    }
    return randomOperation(random, settings.type);
}

bool changesEntries(const Operation &operation) {
    return operation.kind == Kind::add || operation.kind == Kind::deleteOldest ||
           operation.kind == Kind::deleteNewest;
}

// A child carries the operation out and is killed by the first write behind the transaction log
// area, when the flag is set; it ends by itself when there is none.
void dieInCommit(Pair &pair, const Operation &operation) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit untilEntries{entriesStart, entriesStart};
        (void)std::signal(SIGXFSZ, SIG_DFL);
        (void)setrlimit(RLIMIT_FSIZE, &untilEntries);
        (void)store_model::step(pair, operation);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
}

// True when the system has the log as it is now on its disk. A protected log is synced by the
// commit of a change; a clear cuts the file after that.
bool isDurable(const Step &step, const store_model::Log &before, const store_model::Log &now,
               bool isProtected) {
    if (now.settings.type == Type::linked || step.syncs) {
        return true;
    }
    return isProtected && (step.operation.kind == Kind::protect ||
                           (step.operation.kind != Kind::clear && before.entries != now.entries));
}

bool isStart(const Step &step) {
    return step.dies || step.operation.kind == Kind::restart || step.operation.kind >= Kind::kill;
}

} // namespace

Script scriptOf(const store_model::Settings &settings, std::uint32_t seed, std::uint32_t steps) {
    std::mt19937 random(seed);
    Script script{settings, {}};
    for (std::uint32_t place = 0; place < steps; ++place) {
        Step step;
        step.operation = operationAt(place, settings, random);
        const bool linked = settings.type == Type::linked;
        step.dies = linked && changesEntries(step.operation) && random() % 8 == 0;
        step.syncs = !linked && place % 11 == 10;
        script.steps.push_back(step);
    }
    return script;
}

std::string carryOut(Pair &pair, const Step &step) {
    store_model::tick(pair);
    std::string difference;
    if (!step.dies) {
        difference = store_model::step(pair, step.operation);
    } else {
        if (pair.path == pathInMemory) {
            difference = store_model::step(pair, step.operation);
        } else {
            dieInCommit(pair, step.operation);
            (void)store_model::apply(pair.model, step.operation);
        }
        difference += store_model::step(pair, {Kind::kill, 0});
    }
    difference += store_model::compareUnseen(pair);
    if (step.syncs) {
        sync();
    }
    return difference;
}

History historyOf(const Script &script) {
    History history;
    std::string difference;
    Pair pair = store_model::startPair(pathInMemory, script.settings, difference);
    history.moments.push_back({pair.model, memory_disk::contents(pathInMemory)});
    history.durable.push_back(0);
    bool isProtected = false;
    for (const Step &step : script.steps) {
        const store_model::Log before = pair.model.inFile;
        difference += carryOut(pair, step);
        if (!difference.empty()) {
            throw std::runtime_error("in memory, " + nameOf(step) + ": " + difference);
        }
        if (isStart(step)) {
            isProtected = false; // a process's own, and a start is one
        } else if (step.operation.kind == Kind::protect) {
            isProtected = (step.operation.argument & 1) != 0;
        }
        history.durable.push_back(isDurable(step, before, pair.model.inFile, isProtected)
                                      ? history.moments.size()
                                      : history.durable.back());
        history.moments.push_back({pair.model, memory_disk::contents(pathInMemory)});
    }
    memory_disk::exitProcess();
    return history;
}

std::string nameOf(const Step &step) {
    return store_model::nameOf(step.operation) + (step.dies ? ", dying in it" : "") +
           (step.syncs ? ", then sync" : "");
}

} // namespace block_test
