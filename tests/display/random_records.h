// Random records, every byte of them, and what of a record a printer may show.
//
// Fields that choose what is printed (types, masks, lengths) are steered towards values with a
// meaning, but take any value at times. All randomness comes from one seed, and gives the same
// records on every ABI.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "hpi/SaHpi.h"

namespace random_records {

struct Random {
    std::mt19937_64 engine;
};

[[nodiscard]] std::uint32_t below(Random &random, std::uint32_t limit);

void fill(Random &random, std::span<std::byte> bytes);

// An indent of 0 to 69 printable characters and its NUL, with nothing behind it.
[[nodiscard]] std::vector<char> randomIndent(Random &random);

// Gives the fields that choose what is printed values with a meaning, most of the time.
void steer(Random &random, SaHpiSensorReadingT &reading);
void steer(Random &random, SaHpiEventT &event);
void steer(Random &random, SaHpiEventLogEntryT &entry);
void steer(Random &random, SaHpiEventLogInfoT &info);
void steer(Random &random, SaHpiRptEntryT &rpt);
void steer(Random &random, SaHpiRdrT &rdr);
void steer(Random &random, SaHpiConditionT &condition);

// Copies what a printer may show, and nothing else: of an absent part nothing, of a boolean only
// whether it is true. Two records that agree in this must print alike.
void copyShown(const SaHpiSensorReadingT &from, SaHpiSensorReadingT &to);
void copyShown(const SaHpiEventT &from, SaHpiEventT &to);
void copyShown(const SaHpiEventLogEntryT &from, SaHpiEventLogEntryT &to);
void copyShown(const SaHpiEventLogInfoT &from, SaHpiEventLogInfoT &to);
void copyShown(const SaHpiRptEntryT &from, SaHpiRptEntryT &to);
void copyShown(const SaHpiConditionT &from, SaHpiConditionT &to);
void copyShown(const SaHpiRdrT &from, SaHpiRdrT &to, std::uint32_t floatAccuracy);

} // namespace random_records
