// Mounting images and counting verdicts.

#include "tests/blocks/images.h"

#include <cstdio>
#include <stdexcept>

#include <unistd.h>

#include "tests/blocks/disks.h"
#include "tests/blocks/replay.h"

namespace block_test {
namespace {

constexpr char mountedMark[] = "mounted";

std::string markOf(std::size_t moment) {
    return "moment-" + std::to_string(moment); // one word: the kernel takes no more
}

struct Progress {
    bool mounted = false;
    std::size_t acknowledged = 0; // that many moments
};

void follow(Progress &progress, const std::string &mark) {
    if (mark == mountedMark) {
        progress.mounted = true;
    } else if (mark == markOf(progress.acknowledged)) {
        ++progress.acknowledged;
    }
}

void count(Outcome &outcome, const Progress &progress, const Judgement &judgement) {
    const bool creation = progress.acknowledged == 0;
    (creation ? outcome.creation : outcome.images) += 1;
    switch (judgement.verdict) {
    case Verdict::held:
        outcome.held += creation ? 0 : 1;
        break;
    case Verdict::mixed:
        ++outcome.mixed;
        break;
    case Verdict::refused:
        ++outcome.refused;
        break;
    case Verdict::failed:
        ++outcome.failed;
        std::printf("FAILED: image %zu, %zu moments acknowledged:\n%s\n",
                    outcome.creation + outcome.images, progress.acknowledged,
                    judgement.text.c_str());
        break;
    }
}

} // namespace

const std::string logPath = std::string(mountPoint) + "/log";

void markMounted(MappedDevice &logged) {
    sync();
    Disk(logged.path()).flush(); // what no flush followed would come behind the mark
    logged.message(std::string("mark ") + mountedMark);
}

void markMoment(MappedDevice &logged, std::size_t moment) {
    logged.message("mark " + markOf(moment));
}

Judgement judgeReplayDisk(const FileSystem &system, const store_model::Settings &settings,
                          std::span<const Moment> possible) {
    const std::string disks = std::string(replayDisk) + " " + changesDisk;
    try {
        const MappedDevice image("image", {{system.sectors, "snapshot", disks + " N 8"}});
        repair(system, image.path());
        const Mounted mounted(system, image.path());
        return judgeImage(logPath, settings, possible);
    } catch (const std::runtime_error &problem) {
        return {Verdict::failed, problem.what()};
    }
}

void makeDisks(const FileSystem &system) {
    makeFileSystem(system, dataDisk);
    copyDisk(Disk(dataDisk), Disk(replayDisk), system.sectors * sectorSize);
}

Outcome judgeAllImages(const FileSystem &system, const store_model::Settings &settings,
                       std::size_t moments,
                       const std::function<std::span<const Moment>(std::size_t)> &possible) {
    const Disk logged(logDisk);
    const Disk disk(replayDisk);
    BlockLog log(
        [&](std::uint64_t offset, std::uint64_t size) { return logged.read(offset, size); });
    Progress progress;
    Outcome outcome;
    Replay visitor;
    visitor.read = [&](std::uint64_t offset, std::uint64_t size) {
        return disk.read(offset, size);
    };
    visitor.write = [&](std::uint64_t offset, std::string_view bytes) {
        disk.write(offset, bytes);
    };
    visitor.mark = [&](const std::string &mark) { follow(progress, mark); };
    visitor.image = [&] {
        if (progress.mounted) {
            count(outcome, progress,
                  judgeReplayDisk(system, settings, possible(progress.acknowledged)));
        }
    };
    replay(log, visitor);
    if (progress.acknowledged != moments) {
        throw std::runtime_error("marks are missing in the block log");
    }
    return outcome;
}

} // namespace block_test
