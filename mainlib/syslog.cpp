// Syslog lines, through syslog(3) or to a stream. Invariant: one call is one line, whatever the
// text holds.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include <syslog.h>

#include "mainlib/syslog_levels.h"
#include "zuSaHpi_default_mainlib.h"

namespace {

using zusahpi::mainlib::syslogLevelNames;

struct SyslogState {
    FILE *stream = nullptr; // null: syslog(3)
    bool opened = false;    // openlog has been called
};

SyslogState syslogState;

__attribute__((format(printf, 1, 0))) std::string formatted(const char *format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) {
        return {};
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    (void)std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

std::string asOneLine(std::string_view text) {
    while (!text.empty() && text.back() == '\n') {
        text.remove_suffix(1);
    }
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        if (isControl(character)) {
            const unsigned byte = static_cast<unsigned char>(character);
            line += '#';
            line += static_cast<char>('0' + (byte >> 6U));
            line += static_cast<char>('0' + (byte >> 3U & 7U));
            line += static_cast<char>('0' + (byte & 7U));
        } else {
            line += character;
        }
    }
    return line;
}

void write(int level, const std::string &line) {
    if (syslogState.stream != nullptr) {
        // One write call for a line: lines of several processes on one file do not mix.
        const std::string whole =
            std::string(syslogLevelNames[static_cast<std::size_t>(level)]) + ": " + line + "\n";
        // A stream that fails keeps its error indicator, for its owner to look at.
        (void)std::fwrite(whole.data(), 1, whole.size(), syslogState.stream);
        (void)std::fflush(syslogState.stream);
        return;
    }
    if (!syslogState.opened) {
        openlog("zuSaHpi", LOG_PID, LOG_DAEMON);
        syslogState.opened = true;
    }
    // The facility is named here too: a program may have called openlog after us.
    syslog(LOG_DAEMON | level, "%s", line.c_str());
}

} // namespace

void zuSaHpiSyslog(int priority, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    try {
        write(std::clamp(priority, LOG_EMERG, LOG_DEBUG), asOneLine(formatted(format, arguments)));
    } catch (const std::bad_alloc &) { // NOLINT(bugprone-empty-catch)
        // The caller cannot be told, and a lost line must not end the process.
    }
    va_end(arguments);
}

void zuSaHpiSyslogStreamSet(FILE *stream) {
    syslogState.stream = stream;
}
