// Records for the tests of evtlogctl: sample files, records written as hex text, random ones, and
// entries as a log would hold them.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tools/evtlogctl/sel_mapping.h"
#include "tools/evtlogctl/sel_record.h"

namespace sel_samples {

using zusahpi::sel::Record;

// "02 00 df ..."; aborts the test when that is no record.
Record record(std::string_view hex);

std::string dataFile(const std::string &name);    // path of a file of tests/evtlogctl/data
std::string exampleFile(const std::string &name); // path of a file of examples

std::vector<Record> recordsOf(const std::string &path);
std::string bytesOf(const std::vector<Record> &records);

// The paths of the three raw sample files.
std::vector<std::string> sampleFiles();

// Time of logging of the entries below: 2023-11-14T22:13:20Z.
inline constexpr SaHpiTimeT loggedAt = 1'700'000'000'000'000'000;

// The entry that the store makes of an add record.
EventLogEntryRecord entryOf(const EventLogAddRecord &added, std::uint32_t id = 1);
EventLogEntryRecord entryOf(const Record &record, std::uint32_t id = 1,
                            const zusahpi::sel::Mapping &mapping = {});

Record randomRecord(std::mt19937_64 &random);

// A number from 0 to less than `end`.
std::size_t below(std::size_t end, std::mt19937_64 &random);

} // namespace sel_samples
