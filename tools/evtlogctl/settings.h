// Which log the program works on: root folder and configuration, as the global options say or by
// default.
#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {

// The global options, as they were given.
struct Settings {
    std::optional<std::string> configFile;
    std::optional<std::string> root;
    bool forward = false; // added events go to syslog, whatever the configuration says
};

// The log that the configuration describes.
struct LogSetup {
    EventLogControlBlock *block = nullptr; // the library's own
    std::string path;                      // of the log file
};

// /var/lib/zusahpi for the superuser, a folder under the user's state folder for others. Throws
// Failure when there is none.
[[nodiscard]] std::string defaultRoot(uid_t user);

// What the configuration is called in output: its file's name, or "built in".
[[nodiscard]] std::string configurationName(const Settings &settings);

// Sets the root and reads the configuration; makes nothing. Once per process, as the library has
// it. Throws Failure, or ends the process where the library does.
[[nodiscard]] LogSetup configure(const Settings &settings);

// The lock file of a log.
[[nodiscard]] std::string lockOf(const std::string &path);

// Where the configured log's file is or will be. Throws Failure when the configuration keeps none.
[[nodiscard]] std::string configuredLog(const Settings &settings);

// The configured log's file. Throws Failure when the configuration keeps none or it is not there.
[[nodiscard]] std::string existingLog(const Settings &settings);

// The file named, else the configured log's.
[[nodiscard]] std::string logToRead(const Settings &settings, const std::string &named);

// Makes the log's folder where it is missing, takes the lock and starts the log. Throws Failure, or
// ends the process where the library does; the user is then told what to do.
void startLog(const LogSetup &setup);

} // namespace zusahpi::evtlogctl
