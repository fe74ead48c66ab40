// The program that runs in the guest.
//
//   blocks_guest TRIAL FILE-SYSTEM TYPE WHEN-FULL SIZE SEED STEPS
//
// prints a line with the counts of images and ends with status 1 if one of them fails. The trials:
// "power" for power failures, "unsynced" and "turned" for the same with a planted defect, "errors"
// and "dead" for disks that fail in part and as a whole.
//
//   blocks_guest count FILE-SYSTEM TIMES
//
// prints what an add costs, and
//
//   blocks_guest halt
//
// ends the guest.

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/reboot.h>

#include "tests/blocks/block_counts.h"
#include "tests/blocks/io_errors.h"
#include "tests/blocks/power_failures.h"
#include "tests/model/store_check.h"

namespace {

using namespace block_test;

using Words = std::vector<std::string>;

std::uint32_t numberOf(const std::string &word) {
    return static_cast<std::uint32_t>(std::stoul(word));
}

template <typename Value>
Value valueNamed(const std::string &name) {
    for (std::uint32_t value = 0; value < 3; ++value) {
        if (store_model::nameOf(static_cast<Value>(value)) == name) {
            return static_cast<Value>(value);
        }
    }
    throw std::runtime_error("unknown: " + name);
}

Run runOf(const Words &words) {
    Run run;
    run.system = fileSystemNamed(words.at(1));
    run.settings.type = valueNamed<store_model::Type>(words.at(2));
    run.settings.whenFull = valueNamed<store_model::WhenFull>(words.at(3));
    run.settings.size = numberOf(words.at(4));
    run.seed = numberOf(words.at(5));
    run.steps = numberOf(words.at(6));
    return run;
}

Outcome outcomeOf(const std::string &trial, const Run &run) {
    if (trial == "power") {
        return tryPowerFailures(run);
    }
    if (trial == "unsynced") {
        return tryPowerFailures(run, Defect::unsynced);
    }
    if (trial == "turned") {
        return tryPowerFailures(run, Defect::turned);
    }
    if (trial == "errors") {
        return tryWriteErrors(run);
    }
    if (trial == "dead") {
        return tryDeadDisks(run);
    }
    throw std::runtime_error("unknown: " + trial);
}

} // namespace

int main(int count, char **arguments) {
    const Words words(arguments + 1, arguments + count);
    try {
        if (words.at(0) == "halt") {
            return reboot(RB_POWER_OFF); // does not come back
        }
        if (words.at(0) == "count") {
            countBlocks(fileSystemNamed(words.at(1)), words.at(2));
            return EXIT_SUCCESS;
        }
        const Outcome outcome = outcomeOf(words.at(0), runOf(words));
        std::printf("images %zu held %zu mixed %zu failed %zu creation %zu refused %zu\n",
                    outcome.images, outcome.held, outcome.mixed, outcome.failed, outcome.creation,
                    outcome.refused);
        return outcome.failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception &problem) {
        std::printf("FAILED: %s\n", problem.what());
    }
    return EXIT_FAILURE;
}
