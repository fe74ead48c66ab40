// What can be done to a log between two looks at it, as one small number: a sequence of operations
// is a row of numbers, whoever makes it up.
#pragma once

#include <cstdint>
#include <string>

#include "zuSaHpi_util.h"

namespace store_model {

inline constexpr std::uint32_t none = 0xFFFFFFFF;

enum class Type : std::uint32_t { simple = 0, circular = 1, linked = 2 };
enum class WhenFull : std::uint32_t { drop = 0, wrap = 1, writeLast = 2 };

// How a log is started.
struct Settings {
    Type type = Type::simple;
    WhenFull whenFull = WhenFull::drop;
    std::uint32_t size = 1;
    std::uint32_t userEventMaxSize = 120;
    bool enabled = true;
    bool overflowResetable = true;
    bool relativeTime = false;
    bool reinitialize = false;
    bool fileEnabled = true;

    bool operator==(const Settings &) const = default;
};

enum class Kind {
    add,
    addForced,
    deleteOldest,
    deleteNewest,
    deleteNumber,
    clear,
    resetOverflow,
    setTime,
    setState,
    protect,
    read,
    restart,
    kill, // without exit handlers; the lock file is then removed by hand
    resize,
    changeWhenFull,
    changeType,
    changeOthers,
    reinitialize,
    runWithoutFile
};

struct Operation {
    Kind kind = Kind::add;
    std::uint32_t argument = 0;
};

// The operation that a number below `codes` stands for. What empties a log is rare, so that logs
// fill up.
inline constexpr std::uint32_t codes = 1024 * 1024;
Operation decode(std::uint32_t code);

std::string nameOf(const Operation &operation);

std::string nameOf(Type type);
std::string nameOf(WhenFull action);
std::string nameOf(const Settings &settings);

// The settings of the start that the operation makes after one with `settings`.
Settings settingsOfStart(const Operation &operation, Settings settings);

// The id that a deleteNumber or read of a log of `size` entries asks for: numbers that exist,
// numbers that do not, and the ids that stand for an end.
SaHpiEventLogEntryIdT idOf(const Operation &operation, std::uint32_t size);

// Whether a setState enables the log.
bool turnsOn(const Operation &operation);

// The time that a setTime asks for; some are refused.
SaHpiTimeT timeOf(const Operation &operation);

// What an add of this argument stores, in the number's bits: with RPT entry, with RDR, a user event
// (of some length) or not. `serial` tells one add from another.
EventLogAddRecord contentOf(std::uint32_t argument, std::uint32_t serial);

} // namespace store_model
