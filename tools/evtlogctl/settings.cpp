// Root, configuration and start of the log.
#include "tools/evtlogctl/settings.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <unistd.h>

#include "eventlog/log_path.h"
#include "mainlib/default_mainlib.h"
#include "tools/evtlogctl/exit_hint.h"
#include "tools/evtlogctl/failure.h"

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
        fail("the root folder has no name; give one with --root");
    }
    if (zuSaHpiRootSet(root.c_str()) != 0) {
        fail("the root folder's name has {} characters; give a shorter one with --root",
             root.size());
    }
}

[[nodiscard]] zuSaHpiConfigT readConfiguration(const Settings &settings) {
    return settings.configFile ? zuSaHpiConfigFileRead(settings.configFile->c_str())
                               : zuSaHpiConfigTextRead(builtInName, builtIn.data(), builtIn.size());
}

void makeFolder(const LogSetup &setup) {
    if (eventlog::usedAsItStands(setup.block->fileName)) {
        return;
    }
    const std::filesystem::path folder = std::filesystem::path(setup.path).parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        fail("the folder {} cannot be made: {}; choose another with --root", folder.string(),
             error.message());
    }
}

void refuseHeldLock(const LogSetup &setup) {
    const std::string lock = setup.path + ".lck";
    if (access(lock.c_str(), F_OK) == 0) {
        fail("{} is locked by another process; wait until it has ended, or, when no process uses "
             "the log, remove {}",
             setup.path, lock);
    }
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
    fail("there is no home folder to keep the log in; give a folder with --root");
}

std::string configurationName(const Settings &settings) {
    return settings.configFile ? *settings.configFile : builtInName;
}

LogSetup configure(const Settings &settings) {
    setRoot(settings);
    zuSaHpiConfigT configuration = readConfiguration(settings);
    if (configuration.error != nullptr) {
        const std::string error = configuration.error;
        zuSaHpiConfigRelease(&configuration);
        fail("{}; correct the configuration", error);
    }
    LogSetup setup;
    {
        const ExitHint hint(fmt::format("the configuration {} was refused, see the line above; "
                                        "correct it",
                                        configurationName(settings)));
        setup.block = zuSaHpiEvtLogConf(configuration.nodes);
    }
    if (settings.forward) {
        setup.block->syslogEnabled = 1;
    }
    zuSaHpiConfigRelease(&configuration);
    setup.path = pathOf(*setup.block);
    return setup;
}

std::string existingLog(const Settings &settings) {
    const LogSetup setup = configure(settings);
    if (setup.block->fileEnabled == 0) {
        fail("the configuration {} keeps no log file; name a log file, or configure one",
             configurationName(settings));
    }
    if (access(setup.path.c_str(), F_OK) != 0) {
        fail("there is no log yet at {}; make one with \"evtlogctl import FILE\"", setup.path);
    }
    return setup.path;
}

std::string logToRead(const Settings &settings, const std::string &named) {
    return named.empty() ? existingLog(settings) : named;
}

void startLog(const LogSetup &setup) {
    if (setup.block->fileEnabled != 0) {
        makeFolder(setup);
        refuseHeldLock(setup);
    }
    const ExitHint hint(fmt::format("the log {} could not be started, see the line above; check "
                                    "its folder, its permissions and --root",
                                    setup.path));
    (void)zuSaHpiEventLogInit(setup.block); // every failure ends the process
}

} // namespace zusahpi::evtlogctl
