// The device below the file system gets another table in the middle of an operation: before one of
// the store's writes, which are caught at the library's border. The error itself is the device's,
// and what stays in the page cache is what the kernel leaves there.

#include "tests/blocks/io_errors.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "tests/blocks/block_log.h"
#include "tests/blocks/device_mapper.h"
#include "tests/blocks/disks.h"
#include "tests/blocks/library_calls.h"
#include "tests/support/files.h"

namespace block_test {
namespace {

using store_model::Kind;
using store_model::Model;
using store_model::Operation;
using store_model::Pair;
using zusahpi::eventlog::store;

constexpr int mostWritesOfAnOperation = 6;

// Bytes of the disk, in sectors.
struct Extent {
    std::uint64_t start;
    std::uint64_t end;
};

std::vector<fiemap_extent> mapOf(const std::string &path) {
    constexpr std::uint32_t most = 64;
    std::vector<std::uint64_t> room(
        (sizeof(fiemap) + most * sizeof(fiemap_extent)) / sizeof(std::uint64_t) + 1);
    auto *const map = reinterpret_cast<fiemap *>(room.data());
    map->fm_length = FIEMAP_MAX_OFFSET;
    map->fm_flags = FIEMAP_FLAG_SYNC;
    map->fm_extent_count = most;
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const int result = ioctl(fd, FS_IOC_FIEMAP, map);
    close(fd);
    if (result != 0 || map->fm_mapped_extents == 0) {
        throw std::runtime_error("cannot tell where the log lies on the disk");
    }
    const auto *const extents =
        reinterpret_cast<const fiemap_extent *>(room.data() + sizeof(fiemap) / 8);
    return {extents, extents + map->fm_mapped_extents};
}

// Where the log lies, or where it will lie next on a file system that never writes in place.
std::vector<Extent> extentsOfLog(const FileSystem &system) {
    std::vector<Extent> extents;
    const std::string file = test_support::readFile(logPath);
    const Disk disk(dataDisk);
    for (const fiemap_extent &each : mapOf(logPath)) {
        const std::string there = disk.read(each.fe_physical, sectorSize);
        if (there != file.substr(each.fe_logical, sectorSize)) {
            throw std::runtime_error("the log is not where the file system says");
        }
        extents.push_back(
            {each.fe_physical / sectorSize, (each.fe_physical + each.fe_length) / sectorSize});
    }
    if (system.type == "btrfs") {
        constexpr std::uint64_t chunk = 16384; // the file system's first one for data, 8 MiB
        constexpr std::uint64_t firstByte = 13631488;
        return {{firstByte / sectorSize, firstByte / sectorSize + chunk}};
    }
    std::sort(extents.begin(), extents.end(),
              [](const Extent &a, const Extent &b) { return a.start < b.start; });
    return extents;
}

// A disk that can be made to fail, over another device.
struct Breakable {
    explicit Breakable(const FileSystem &system, const std::string &device)
        : below(device), sectors(system.sectors), disk("disk", {linear(0, sectors)}) {
    }

    [[nodiscard]] Segment linear(std::uint64_t from, std::uint64_t to) const {
        return {to - from, "linear", below + " " + std::to_string(from)};
    }

    // All of it fails, or writes alone.
    [[nodiscard]] Segment failing(std::uint64_t from, std::uint64_t to, bool writesAlone) const {
        if (!writesAlone) {
            return {to - from, "error", ""};
        }
        return {to - from, "flakey",
                below + " " + std::to_string(from) + " 0 86400 1 error_writes"};
    }

    [[nodiscard]] std::vector<Segment> tableFailingIn(const std::vector<Extent> &extents,
                                                      bool writesAlone) const {
        std::vector<Segment> table;
        std::uint64_t from = 0;
        for (const Extent &each : extents) {
            if (each.start > from) {
                table.push_back(linear(from, each.start));
            }
            table.push_back(failing(each.start, each.end, writesAlone));
            from = each.end;
        }
        if (from < sectors) {
            table.push_back(linear(from, sectors));
        }
        return table;
    }

    void repair() {
        disk.load({linear(0, sectors)});
    }

    std::string below;
    std::uint64_t sectors;
    MappedDevice disk;
};

// The models that a log may be like.
using Models = std::vector<Model>;

void addModel(Models &models, const Model &model) {
    if (std::find(models.begin(), models.end(), model) == models.end()) {
        models.push_back(model);
    }
}

// The operation was done or not; serials go on in any case.
Models doneOrNot(const Models &models, const Operation &operation) {
    Models result;
    for (Model model : models) {
        Model done = model;
        (void)store_model::apply(done, operation);
        model.serial = done.serial;
        addModel(result, model);
        addModel(result, done);
    }
    return result;
}

Models done(const Models &models, const Operation &operation) {
    Models result;
    for (Model model : models) {
        (void)store_model::apply(model, operation);
        addModel(result, model);
    }
    return result;
}

class FaultyLog {
  public:
    FaultyLog(const Run &run, Breakable &device) : device_(device), random_(run.seed) {
        std::string difference;
        const Pair pair = store_model::startPair(logPath, run.settings, difference);
        if (!difference.empty()) {
            throw std::runtime_error(difference);
        }
        models_ = {pair.model};
    }

    // Starts the store on what is there already, and may be any of these.
    FaultyLog(const Run &run, Breakable &device, Models models, int faults)
        : device_(device), random_(run.seed + static_cast<std::uint32_t>(faults)),
          models_(std::move(models)), faults_(faults) {
        store = {};
        works({Kind::kill, 0});
    }

    [[nodiscard]] const Models &models() const {
        return models_;
    }

    // An operation that must succeed. All models agree about its answer.
    void works(const Operation &operation) {
        const std::string difference = tryIt(operation);
        if (!difference.empty()) {
            throw std::runtime_error("fails though the disk works: " +
                                     store_model::nameOf(operation) + ": " + difference);
        }
        models_ = done(models_, operation);
        Models alike;
        std::string differences;
        for (const Model &model : models_) {
            const std::string wrong = store_model::compareUnseen({logPath, model});
            differences += wrong;
            if (wrong.empty()) {
                alike.push_back(model);
            }
        }
        if (alike.empty()) {
            throw std::runtime_error("after " + store_model::nameOf(operation) +
                                     " the process shows none of " +
                                     std::to_string(models_.size()) + " logs:\n" + differences);
        }
        models_ = alike;
    }

    // An operation that meets the fault at one of its writes, each time at the next one, and need
    // not come that far. Says whether it failed.
    bool fails(const Operation &operation, const std::vector<Segment> &table) {
        beforeWrite(faults_++ % mostWritesOfAnOperation,
                    [this, &table] { device_.disk.load(table); });
        const bool failed = !tryIt(operation).empty();
        const bool begun = endBeforeWrite();
        models_ = failed ? doneOrNot(models_, operation) : done(models_, operation);
        return failed && begun;
    }

    // The same while the fault lasts.
    void mayFail(const Operation &operation) {
        const bool failed = !tryIt(operation).empty();
        models_ = failed ? doneOrNot(models_, operation) : done(models_, operation);
    }

    // One that succeeds on each of the models.
    Operation nextOperation() {
        const bool full = std::all_of(models_.begin(), models_.end(), [](const Model &model) {
            return model.inFile.entries.size() > 2;
        });
        const auto choice = static_cast<std::uint32_t>(random_() % 8);
        if (full && choice < 2) {
            return {choice == 0 ? Kind::deleteOldest : Kind::deleteNewest, 0};
        }
        return {Kind::add, static_cast<std::uint32_t>(random_() % 8)};
    }

    std::mt19937 &random() {
        return random_;
    }

  private:
    std::string tryIt(const Operation &operation) {
        Pair pair{logPath, models_.front()};
        store_model::tick(pair);
        for (Model &model : models_) {
            model.now = pair.model.now;
        }
        return store_model::step(pair, operation);
    }

    Breakable &device_;
    std::mt19937 random_;
    Models models_;
    int faults_ = 0;
};

std::vector<Moment> momentsOf(const Models &models) {
    std::vector<Moment> moments;
    for (const Model &model : models) {
        moments.push_back({model, ""});
    }
    return moments;
}

// A failing step is followed by up to two more failures, then the disk works again.
void failForAWhile(FaultyLog &log, Breakable &device, const FileSystem &system) {
    const std::vector<Segment> table =
        device.tableFailingIn(extentsOfLog(system), log.random()() % 2 == 0);
    if (log.fails(log.nextOperation(), table)) {
        for (auto more = log.random()() % 3; more > 0; --more) {
            log.mayFail(log.nextOperation());
        }
    }
    device.repair();
}

// The blocks are logged below the device that fails: what does not come that far is on no disk.
std::vector<std::vector<Moment>> logBlocksAmongErrors(const Run &run) {
    const std::string disks = std::string(dataDisk) + " " + logDisk;
    MappedDevice logged("logged", {{run.system.sectors, "log-writes", disks}});
    Breakable device(run.system, logged.path());
    const Mounted mounted(run.system, device.disk.path());
    markMounted(logged);

    FaultyLog log(run, device);
    std::vector<std::vector<Moment>> possible{momentsOf(log.models())};
    markMoment(logged, 0);
    for (std::uint32_t step = 0; step < run.steps; ++step) {
        if (step % 3 == 2) {
            failForAWhile(log, device, run.system);
        } else if (step % 9 == 3) { // right after a failure
            log.works({Kind::kill, 0});
        } else {
            log.works(log.nextOperation());
        }
        possible.push_back(momentsOf(log.models()));
        markMoment(logged, step + 1);
    }
    memory_disk::exitProcess();
    return possible;
}

} // namespace

Outcome tryWriteErrors(const Run &run) {
    makeDisks(run.system);
    const std::vector<std::vector<Moment>> possible = logBlocksAmongErrors(run);
    std::vector<Moment> either; // the last acknowledged moment or the next one
    return judgeAllImages(run.system, run.settings, possible.size(), [&](std::size_t count) {
        either.clear();
        for (std::size_t i = count == 0 ? 1 : count; count != 0 && i <= count + 1; ++i) {
            if (i <= possible.size()) {
                either.insert(either.end(), possible[i - 1].begin(), possible[i - 1].end());
            }
        }
        return std::span<const Moment>(either);
    });
}

Outcome tryDeadDisks(const Run &run) {
    Outcome outcome;
    makeFileSystem(run.system, dataDisk);
    Models models;
    for (std::uint32_t round = 0; round < run.steps; ++round) {
        {
            Breakable device(run.system, dataDisk);
            const Mounted mounted(run.system, device.disk.path());
            FaultyLog log = models.empty()
                                ? FaultyLog(run, device)
                                : FaultyLog(run, device, models, static_cast<int>(round));
            for (int i = 0; i < 6; ++i) {
                log.works(log.nextOperation());
            }
            const std::vector<Segment> dead{
                device.failing(0, device.sectors, log.random()() % 2 == 0)};
            (void)log.fails(log.nextOperation(), dead);
            log.mayFail(log.nextOperation());
            device.repair();
            log.mayFail(log.nextOperation()); // most file systems do not come back by themselves
            models = log.models();
            memory_disk::exitProcess();
        }
        repairAfterErrors(run.system, dataDisk);
        const Mounted mounted(run.system, dataDisk);
        const std::vector<Moment> possible = momentsOf(models);
        const Judgement judgement = judgeImage(logPath, run.settings, possible);
        ++outcome.images;
        if (judgement.verdict == Verdict::held) {
            ++outcome.held;
        } else {
            ++outcome.failed;
            std::printf("FAILED: round %u:\n%s\n", round, judgement.text.c_str());
            break;
        }
    }
    return outcome;
}

} // namespace block_test
