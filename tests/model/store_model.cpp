// The model's operations.

#include "tests/model/store_model.h"

#include <algorithm>

namespace store_model {
namespace {

SaHpiTimeT logTime(const Model &model) {
    return model.now + logOf(model).offset;
}

std::uint32_t nextNumber(const Log &log) {
    switch (log.settings.type) {
    case Type::simple:
        return static_cast<std::uint32_t>(log.entries.size()) + 1;
    case Type::circular:
        if (log.entries.empty()) {
            return 1;
        }
        return log.entries.back().number % log.settings.size + 1;
    case Type::linked:
        return log.toReuse.empty() ? log.numbersUsed + 1 : log.toReuse.back();
    }
    return none;
}

void append(Log &log, const Entry &entry) {
    if (log.settings.type == Type::linked) {
        if (log.toReuse.empty()) {
            ++log.numbersUsed;
        } else {
            log.toReuse.pop_back();
        }
    }
    log.entries.push_back(entry);
    log.recordsInFile = std::max(log.recordsInFile, entry.number);
}

void remove(Log &log, std::size_t place) {
    if (log.settings.type == Type::linked) {
        log.toReuse.push_back(log.entries[place].number);
    }
    log.entries.erase(log.entries.begin() + static_cast<std::ptrdiff_t>(place));
}

bool mayRemove(const Log &log, std::size_t place) {
    const bool isNewest = place + 1 == log.entries.size();
    switch (log.settings.type) {
    case Type::simple:
        return isNewest;
    case Type::circular:
        return isNewest || place == 0;
    case Type::linked:
        return true;
    }
    return false;
}

const char *refusalToRemove(const Log &log) {
    return log.settings.type == Type::simple
               ? "Event log error: Attempt to delete non-newest entry in Simple-type log.\n"
               : "Attempt to delete non-end entry in Circular-type log.\n";
}

Answer makeRoom(Log &log) {
    if (log.settings.size == 0 || log.settings.whenFull == WhenFull::drop) {
        log.overflow = true;
        return {SA_ERR_HPI_OUT_OF_SPACE, ""};
    }
    const bool oldest = log.settings.whenFull == WhenFull::wrap;
    const std::size_t place = oldest ? 0 : log.entries.size() - 1;
    if (!mayRemove(log, place)) {
        return {SA_ERR_HPI_INTERNAL_ERROR, std::string(refusalToRemove(log)) +
                                               "Event log error - unable to delete oldest entry\n"};
    }
    remove(log, place);
    log.overflow = true;
    return {};
}

Answer add(Model &model, std::uint32_t argument, bool force) {
    Log &log = logOf(model);
    if (!model.withFile || (!log.enabled && !force)) {
        return {};
    }
    const bool isUserEvent = (argument & 4) != 0;
    const std::uint32_t userDataLength = (argument >> 3) & 0xFF;
    if (isUserEvent && userDataLength > log.settings.userEventMaxSize) {
        return {SA_ERR_HPI_INVALID_DATA, ""};
    }
    if (log.entries.size() == log.settings.size) {
        if (const Answer refused = makeRoom(log); refused.result != SA_OK) {
            return refused;
        }
    }
    append(log, {nextNumber(log), logTime(model), argument, ++model.serial});
    log.updated = logTime(model);
    return {};
}

Answer removeById(Model &model, SaHpiEventLogEntryIdT id) {
    Log &log = logOf(model);
    if (!model.withFile || log.entries.empty()) {
        return {SA_ERR_HPI_NOT_PRESENT, ""};
    }
    std::uint32_t number = id;
    if (id == SAHPI_OLDEST_ENTRY) {
        number = log.entries.front().number;
    } else if (id == SAHPI_NEWEST_ENTRY) {
        number = log.entries.back().number;
    }
    for (std::size_t place = 0; place < log.entries.size(); ++place) {
        if (log.entries[place].number != number) {
            continue;
        }
        if (!mayRemove(log, place)) {
            return {SA_ERR_HPI_INTERNAL_ERROR, refusalToRemove(log)};
        }
        remove(log, place);
        log.updated = logTime(model);
        return {};
    }
    return {SA_ERR_HPI_NOT_PRESENT, ""};
}

Answer clear(Model &model) {
    Log &log = logOf(model);
    log.updated = logTime(model);
    if (model.withFile) {
        log.entries.clear();
        log.toReuse.clear();
        log.numbersUsed = 0;
        log.recordsInFile = 0;
        log.overflow = false;
    }
    return {};
}

Answer resetOverflow(Model &model) {
    Log &log = logOf(model);
    if (!model.withFile) {
        return {};
    }
    if (!log.settings.overflowResetable) {
        return {SA_ERR_HPI_INVALID_CMD, ""};
    }
    if (log.overflow) {
        log.overflow = false;
        log.updated = logTime(model);
    }
    return {};
}

Answer setTime(Model &model, SaHpiTimeT time) {
    if (time < 0) {
        return {SA_ERR_HPI_INVALID_PARAMS, ""};
    }
    logOf(model).offset = time - model.now;
    return {};
}

Log emptyLog(const Settings &settings, SaHpiTimeT now) {
    Log log;
    log.settings = settings;
    log.enabled = settings.enabled;
    log.updated = settings.relativeTime ? 0 : now;
    log.offset = settings.relativeTime ? -now : 0;
    return log;
}

Answer start(Model &model, const Settings &settings) {
    model.withFile = settings.fileEnabled;
    if (!settings.fileEnabled) {
        model.withoutFile = emptyLog(settings, model.now);
        return {};
    }
    Log &log = model.inFile;
    std::string printed;
    if (settings.reinitialize) {
        log = emptyLog(settings, model.now);
    } else if (settings.type != log.settings.type) {
        printed = "Specified log file type doesn't match existing log file.\n"
                  "Deleting current log data\n";
        log = emptyLog(settings, model.now);
    } else if (settings.size != log.settings.size && settings.type == Type::circular) {
        printed = "Resizing circular log file\nDeleting current log data\n";
        log = emptyLog(settings, model.now);
    } else if (settings.size < highestNumber(log)) {
        printed = "Resizing log file results inloss of data.\nDeleting all current log data\n";
        log = emptyLog(settings, model.now);
    }
    log.settings = settings;
    log.enabled = settings.enabled;
    log.recordsInFile = highestNumber(log);
    return {SA_OK, printed};
}

} // namespace

Log &logOf(Model &model) {
    return model.withFile ? model.inFile : model.withoutFile;
}

const Log &logOf(const Model &model) {
    return model.withFile ? model.inFile : model.withoutFile;
}

Model firstStart(const Settings &settings, SaHpiTimeT now) {
    Model model;
    model.now = now;
    model.inFile = emptyLog(settings, now);
    return model;
}

Answer apply(Model &model, const Operation &operation) {
    const Settings &settings = logOf(model).settings;
    switch (operation.kind) {
    case Kind::add:
        return add(model, operation.argument, false);
    case Kind::addForced:
        return add(model, operation.argument, true);
    case Kind::deleteOldest:
        return removeById(model, SAHPI_OLDEST_ENTRY);
    case Kind::deleteNewest:
        return removeById(model, SAHPI_NEWEST_ENTRY);
    case Kind::deleteNumber:
        return removeById(model, idOf(operation, settings.size));
    case Kind::clear:
        return clear(model);
    case Kind::resetOverflow:
        return resetOverflow(model);
    case Kind::setTime:
        return setTime(model, timeOf(operation));
    case Kind::setState:
        logOf(model).enabled = turnsOn(operation);
        return {};
    case Kind::protect:
    case Kind::read: // what reads return is looked at after every operation
        return {};
    default:
        return start(model, settingsOfStart(operation, settings));
    }
}

std::uint32_t highestNumber(const Log &log) {
    if (log.settings.type == Type::linked) {
        return log.numbersUsed;
    }
    std::uint32_t highest = 0;
    bool wrapped = false;
    for (const Entry &entry : log.entries) {
        wrapped = wrapped || entry.number < highest;
        highest = std::max(highest, entry.number);
    }
    // Once entries stand on both sides of the ring's end, every number is kept.
    return wrapped ? log.settings.size : highest;
}

} // namespace store_model
