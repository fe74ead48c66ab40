// Root, configuration and start of the log.
#include "tools/evtlogctl/settings.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <unistd.h>

#include "eventlog/log_path.h"
#include "tools/evtlogctl/exit_hint.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/log_check.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr const char *systemRoot = "/var/lib/zusahpi";
constexpr const char *userFolder = "zusahpi";
constexpr const char *builtInName = "built in";

// Used when no configuration is given.
constexpr std::string_view builtIn = R"(EventLog=linked {
    Filename="evtlog.dat"
    Size=10000
    Overflow=wrap
    Syslog=no
}
)";

[[nodiscard]] std::string pathOf(const EventLogControlBlock &block) {
    const std::string name = block.fileName;
    return eventlog::usedAsItStands(name.c_str())
               ? name
               : fmt::format("{}{}{}", zuSaHpiRoot, eventlog::logFolder, name);
}

void setRoot(const Settings &settings) {
    const std::string root = settings.root ? *settings.root : defaultRoot(geteuid());
    if (root.empty()) {
        fail(Status::wrongUsage, "the root folder has no name; give one with --root");
    }
    if (zuSaHpiRootSet(root.c_str()) != 0) {
        fail(Status::wrongUsage,
             "the root folder's name has {} characters; give a shorter one with --root",
             root.size());
    }
}

[[nodiscard]] zuSaHpiConfigT readConfiguration(const Settings &settings) {
    return settings.configFile ? zuSaHpiConfigFileRead(settings.configFile->c_str())
                               : zuSaHpiConfigTextRead(builtInName, builtIn.data(), builtIn.size());
}

[[nodiscard]] bool unreadable(const Settings &settings) {
    return settings.configFile && access(settings.configFile->c_str(), R_OK) != 0;
}

void makeFolder(const LogSetup &setup) {
    if (eventlog::usedAsItStands(setup.block->fileName)) {
        return;
    }
    const std::filesystem::path folder = std::filesystem::path(setup.path).parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        fail(Status::systemRefused, "the folder {} cannot be made: {}; choose another with --root",
             folder.string(), error.message());
    }
}

// Why the library could not start the log, from what it left behind. Its own lock is gone by now,
// so one that is there is another process's.
[[nodiscard]] Hint hintOfFailedStart(const std::string &path) {
    if (access(lockOf(path).c_str(), F_OK) == 0) {
        return {.text = fmt::format("{} is locked by another process; wait until it has ended, or, "
                                    "if it was killed, remove its lock with \"evtlogctl unlock\"",
                                    path),
                .status = Status::systemRefused};
    }
    switch (startObstacle(path)) {
    case StartObstacle::cutWhileMade:
        return {.text = fmt::format("the log {} was cut short by a crash while it was made, and "
                                    "holds nothing; \"rm {}\" lets the next start make it anew",
                                    path, path),
                .status = Status::damaged};
    case StartObstacle::damage:
        return {.text =
                    fmt::format("the log {} is damaged, see the line above; \"evtlogctl check\" "
                                "says where, and with --salvage saves its entries",
                                path),
                .status = Status::damaged};
    case StartObstacle::waitingUpdate:
        return {.text =
                    fmt::format("an interrupted update of the log {} could not be finished, see "
                                "the line above; it is safe and waits: make room on the disk, "
                                "and try again",
                                path),
                .status = Status::systemRefused};
    case StartObstacle::none:
        break;
    }
    return {.text = fmt::format("the log {} could not be started, see the line above; check its "
                                "folder, its permissions and --root",
                                path),
            .status = Status::systemRefused};
}

} // namespace

std::string defaultRoot(uid_t user) {
    if (user == 0) {
        return systemRoot;
    }
    const char *const state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && state[0] == '/') { // a relative one does not count
        return fmt::format("{}/{}", state, userFolder);
    }
    const char *const home = std::getenv("HOME");
    if (home != nullptr && home[0] != '\0') {
        return fmt::format("{}/.local/state/{}", home, userFolder);
    }
    fail(Status::wrongUsage,
         "there is no home folder to keep the log in; give a folder with --root");
}

std::string configurationName(const Settings &settings) {
    return settings.configFile ? *settings.configFile : builtInName;
}

std::string lockOf(const std::string &path) {
    return path + ".lck";
}

LogSetup configure(const Settings &settings) {
    setRoot(settings);
    zuSaHpiConfigT configuration = readConfiguration(settings);
    if (configuration.error != nullptr) {
        const std::string error = configuration.error;
        zuSaHpiConfigRelease(&configuration);
        fail(unreadable(settings) ? Status::systemRefused : Status::wrongUsage,
             "{}; correct the configuration", error);
    }
    LogSetup setup;
    {
        const ExitHint hint([name = configurationName(settings)] {
            return Hint{.text = fmt::format("the configuration {} was refused, see the line above; "
                                            "correct it",
                                            name),
                        .status = Status::wrongUsage};
        });
        setup.block = zuSaHpiEvtLogConf(configuration.nodes);
    }
    if (settings.forward) {
        setup.block->syslogEnabled = 1;
    }
    zuSaHpiConfigRelease(&configuration);
    setup.path = pathOf(*setup.block);
    return setup;
}

std::string configuredLog(const Settings &settings) {
    const LogSetup setup = configure(settings);
    if (setup.block->fileEnabled == 0) {
        fail(Status::wrongUsage,
             "the configuration {} keeps no log file; name a log file, or configure one",
             configurationName(settings));
    }
    return setup.path;
}

std::string existingLog(const Settings &settings) {
    std::string path = configuredLog(settings);
    if (access(path.c_str(), F_OK) != 0) {
        fail(Status::systemRefused,
             "there is no log yet at {}; make one with \"evtlogctl import FILE\"", path);
    }
    return path;
}

std::string logToRead(const Settings &settings, const std::string &named) {
    return named.empty() ? existingLog(settings) : named;
}

void startLog(const LogSetup &setup) {
    if (setup.block->fileEnabled != 0) {
        makeFolder(setup);
    }
    const ExitHint hint([path = setup.path] { return hintOfFailedStart(path); });
    (void)zuSaHpiEventLogInit(setup.block); // every failure ends the process
}

} // namespace zusahpi::evtlogctl
