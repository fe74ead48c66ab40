// evtlogctl import --watch: a command reads the System Event Log again and again, and what is new
// in it becomes entries of the log.
//
// Invariants:
//   - The log's lock is held while records are added, and only then. The library gives it up when
//     its process ends, so a copy of this process adds them.
//   - What goes wrong is said once, and again when it changes: a night without a controller is one
//     line, not one for each reading.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

#include <unistd.h>

#include "tools/evtlogctl/child_process.h"
#include "tools/evtlogctl/commands.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/import_steps.h"
#include "tools/evtlogctl/interruption.h"
#include "tools/evtlogctl/sel_command.h"
#include "tools/evtlogctl/sel_news.h"

namespace zusahpi::evtlogctl {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto lockWait = std::chrono::seconds{5}; // for one who holds it for a moment
constexpr auto lockLook = std::chrono::milliseconds{50};

struct Watch {
    const LogSetup &setup;
    const ImportOptions &import;
    sel::Mapping mapping;
    SelCommand command;
    std::optional<sel::Known> known; // empty when the log is to be asked
    bool all = false;                // what the log holds does not count as known
    bool hinted = false;             // at the order of manufacturer ids
    std::string trouble;             // that was said and has not passed, without its numbers
};

void waitFor(Clock::duration time) {
    const Clock::time_point end = Clock::now() + time;
    for (auto left = time; left > Clock::duration::zero() && !interrupted();
         left = end - Clock::now()) {
        waitForAny({}, std::chrono::ceil<std::chrono::milliseconds>(left));
    }
}

// ---- Adding what is new -------------------------------------------------------------------------

// What the copy of this process reports.
struct Batch {
    std::size_t added = 0;
    std::size_t lost = 0;
    bool unsure = false; // an addition failed, and may be finished by the next start of the log
};

[[nodiscard]] Batch addBatch(const Watch &watch, const std::vector<sel::Record> &records,
                             std::optional<Failure> &failure) {
    startLog(watch.setup);
    const std::size_t before = entriesOfLog();
    Batch batch;
    for (const sel::Record &record : records) {
        if (interrupted()) {
            break; // the rest is added by the next watch
        }
        try {
            requireRoom(watch.setup, batch.added);
            addRecord(record, watch.mapping, batch.added, watch.setup.path);
        } catch (const Failure &caught) {
            failure = caught;
            batch.unsure = caught.status != Status::findings; // a full log took nothing
            break;
        }
        ++batch.added;
    }
    if (watch.setup.block->fileEnabled != 0) {
        batch.lost = before + batch.added - entriesOfLog();
    }
    return batch;
}

[[nodiscard]] int runBatch(const Watch &watch, const std::vector<sel::Record> &records) {
    std::optional<Failure> failure;
    const Batch batch = addBatch(watch, records, failure);
    if (std::fwrite(&batch, sizeof batch, 1, stdout) != 1 || std::fflush(stdout) != 0) {
        fail(Status::systemRefused, "what was added cannot be reported: {}", systemError());
    }
    if (failure) {
        throw Failure(*failure);
    }
    return static_cast<int>(Status::done);
}

// Whoever adds an entry by hand holds the lock for a moment: that is no trouble.
void waitForLock(const LogSetup &setup) {
    const Clock::time_point end = Clock::now() + lockWait;
    const std::string lock = lockOf(setup.path);
    while (setup.block->fileEnabled != 0 && access(lock.c_str(), F_OK) == 0 && !interrupted() &&
           Clock::now() < end) {
        waitFor(lockLook);
    }
}

// Where only the log knows how many records arrived.
void askLogAgain(Watch &watch) {
    watch.known.reset();
    watch.all = false;
}

struct Added {
    Batch batch;
    std::string trouble; // lines; empty when all were added
};

[[nodiscard]] Added addNews(Watch &watch, const std::vector<sel::Record> &records) {
    waitForLock(watch.setup);
    const ChildResult result = runCopy([&] { return runBatch(watch, records); });
    Added added;
    if (result.output.size() == sizeof added.batch) {
        std::memcpy(&added.batch, result.output.data(), sizeof added.batch);
    }
    if (result.ending == Ending::notStarted) {
        fail(Status::systemRefused,
             "{}: no process can be made that adds records: {}; end other "
             "programs",
             watch.setup.path, std::strerror(result.code));
    }
    if (result.ending == Ending::killed) {
        askLogAgain(watch);
        fail(Status::systemRefused,
             "{}: the process that adds records was killed by signal {}; remove its lock with "
             "\"evtlogctl unlock\"",
             watch.setup.path, result.code);
    }
    if (result.code != 0) {
        added.trouble = result.errors;
    } else {
        (void)std::fputs(result.errors.c_str(), stderr); // remarks, forwarded events
    }
    return added;
}

// ---- The watch ----------------------------------------------------------------------------------

struct Look {
    ImportCounts counts;
    std::string remark;
    std::string trouble; // lines, each whole
};

void hintOnce(Watch &watch, const std::vector<sel::Record> &records) {
    if (!watch.hinted) {
        watch.hinted = hintAtOemOrder(nameOf(watch.command), records, watch.import.oemOrder);
    }
}

[[nodiscard]] std::vector<sel::Record> taken(const std::vector<sel::Record> &reading,
                                             const std::vector<std::size_t> &places) {
    std::vector<sel::Record> records;
    records.reserve(places.size());
    for (const std::size_t place : places) {
        records.push_back(reading[place]);
    }
    return records;
}

// Reads the SEL once, or twice when it seems to be another than before, and adds what is new.
// Empty when this process is asked to end.
[[nodiscard]] std::optional<Look> lookForNews(Watch &watch) {
    auto reading = readSel(watch.command);
    if (!reading) {
        return std::nullopt;
    }
    if (!watch.known) {
        watch.known = {.records =
                           watch.all ? std::vector<sel::Record>{} : recordsOfLog(watch.setup),
                       .ofLog = true};
    }
    sel::News news = sel::newsOf(*watch.known, *reading);
    if (news.replaced) {
        reading = readSel(watch.command);
        if (!reading) {
            return std::nullopt;
        }
        news = sel::newsOf(*watch.known, *reading);
    }
    Look look{.counts = {}, .remark = {}, .trouble = {}};
    look.counts.read = reading->size();
    look.counts.known = reading->size() - news.places.size();
    if (!news.places.empty()) {
        hintOnce(watch, *reading);
        Added added = addNews(watch, taken(*reading, news.places));
        look.counts.added = added.batch.added;
        look.counts.lost = added.batch.lost;
        look.trouble = std::move(added.trouble);
        if (news.replaced && !watch.known->ofLog) {
            look.remark = "; none of them was there before: it was cleared or has gone round";
        }
        if (added.batch.unsure) {
            askLogAgain(watch);
            return look;
        }
    }
    watch.known = sel::knownAfter(*watch.known, *reading, news, look.counts.added);
    return look;
}

// Counts, times and process numbers change from one time to the next: that is no other trouble.
[[nodiscard]] std::string withoutNumbers(const std::string &text) {
    std::string rest;
    std::copy_if(text.begin(), text.end(), std::back_inserter(rest),
                 [](char letter) { return letter < '0' || letter > '9'; });
    return rest;
}

// `lines` empty: there is none.
void sayTrouble(Watch &watch, const std::string &lines) {
    const std::string trouble = withoutNumbers(lines);
    if (trouble == watch.trouble) {
        return;
    }
    if (lines.empty()) {
        complain(fmt::format("{}: all is well again", nameOf(watch.command)));
    } else {
        (void)std::fputs(lines.c_str(), stderr);
    }
    watch.trouble = trouble;
}

void watchOnce(Watch &watch) {
    std::optional<Look> look;
    try {
        look = lookForNews(watch);
    } catch (const Failure &failure) {
        if (!watch.command.ran) {
            throw; // there is no such program: nothing to wait for
        }
        sayTrouble(watch, fmt::format("{}: {}\n", programName, shown(failure.what())));
        return;
    }
    if (!look) {
        return;
    }
    if (look->counts.added > 0 && !watch.import.quiet) {
        summarise(nameOf(watch.command), look->counts, look->remark);
    }
    sayTrouble(watch, look->trouble);
}

} // namespace

Status watchRecords(const Settings &settings, const ImportOptions &import,
                    const WatchOptions &options) {
    const sel::SeverityTable severities = readSeverities(import.severityTable);
    const LogSetup setup = configure(settings);
    if (setup.block->reinitialize != 0) {
        fail(Status::wrongUsage,
             "the configuration {} empties the log at every start, and a watch starts it for every "
             "addition; set Reinitialize=no",
             configurationName(settings));
    }
    noteInterruptions();
    deferInterruptions();
    Watch watch{
        .setup = setup,
        .import = import,
        .mapping = {.utcOffset = import.utcOffset,
                    .oemOrder = import.oemOrder,
                    .severities = &severities},
        .command = {.words = options.command, .form = import.form, .timeLimit = options.timeLimit},
        .known = {},
        .all = import.all,
        .trouble = {}};
    while (!interrupted()) {
        watchOnce(watch);
        waitFor(options.interval);
    }
    return Status::done;
}

} // namespace zusahpi::evtlogctl
