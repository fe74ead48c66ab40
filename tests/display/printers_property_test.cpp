// Goal: whatever the bytes of a record, its printer reads nothing outside it (under the
// sanitizers), ends its last line, and shows only what the record holds: a second record that
// agrees with the first in what is shown, and has other padding, other bytes behind every length
// and another rest of every union, prints the same text.
//
// A failure names the seed of its record.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/random_records.h"
#include "zuSaHpi_util.h"

namespace {

using random_records::below;
using random_records::copyShown;
using random_records::Random;
using random_records::steer;

constexpr std::uint64_t firstSeed = 20'260'101;
constexpr std::uint64_t rounds = 1500;

template <typename Record>
std::unique_ptr<Record> randomRecord(Random &random) {
    auto record = std::make_unique<Record>();
    random_records::fill(random, std::as_writable_bytes(std::span(record.get(), 1)));
    return record;
}

// Calls `check` with a random source for each seed, until a check fails.
template <typename Check>
void forEachSeed(const Check &check) {
    for (std::uint64_t seed = firstSeed; seed < firstSeed + rounds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random{std::mt19937_64(seed)};
        check(random);
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

bool endsLine(const std::string &text) {
    return !text.empty() && text.back() == '\n';
}

// `copy` makes the second record agree with the first, `print` prints a record with an indent.
template <typename Record, typename Copy, typename Print>
void expectShowsOnlyTheRecord(Random &random, const Copy &copy, const Print &print) {
    const auto record = randomRecord<Record>(random);
    steer(random, *record);
    const auto twin = randomRecord<Record>(random);
    copy(*record, *twin);
    const std::vector<char> indent = random_records::randomIndent(random);
    const auto textOf = [&](const Record &printed) {
        return printedBy([&](zuSaHpiHandleT out) { return print(out, printed, indent.data()); })
            .text;
    };
    const std::string text = textOf(*record);
    EXPECT_EQ(textOf(*twin), text);
    EXPECT_TRUE(endsLine(text)) << text;
}

template <typename Record, typename Print>
void expectShowsOnlyTheRecord(const Print &print) {
    forEachSeed([&](Random &random) {
        expectShowsOnlyTheRecord<Record>(
            random, [](const Record &from, Record &to) { copyShown(from, to); }, print);
    });
}

TEST(PrintersProperty, Event) {
    expectShowsOnlyTheRecord<SaHpiEventT>(
        [](zuSaHpiHandleT out, const SaHpiEventT &event, const char *indent) {
            return zuSaHpiPrintEvent(out, &event, indent);
        });
}

TEST(PrintersProperty, EventLogEntry) {
    expectShowsOnlyTheRecord<SaHpiEventLogEntryT>(
        [](zuSaHpiHandleT out, const SaHpiEventLogEntryT &entry, const char *indent) {
            return zuSaHpiPrintEventLogEntry(out, &entry, indent);
        });
}

TEST(PrintersProperty, EventLogInfo) {
    expectShowsOnlyTheRecord<SaHpiEventLogInfoT>(
        [](zuSaHpiHandleT out, const SaHpiEventLogInfoT &info, const char *indent) {
            return zuSaHpiPrintEventLogInfo(out, &info, indent);
        });
}

TEST(PrintersProperty, RptEntry) {
    expectShowsOnlyTheRecord<SaHpiRptEntryT>(
        [](zuSaHpiHandleT out, const SaHpiRptEntryT &rpt, const char *indent) {
            return zuSaHpiRptDisplay(out, &rpt, indent);
        });
}

TEST(PrintersProperty, Condition) {
    expectShowsOnlyTheRecord<SaHpiConditionT>(
        [](zuSaHpiHandleT out, const SaHpiConditionT &condition, const char *indent) {
            return zuSaHpiConditionDisplay(out, &condition, indent);
        });
}

TEST(PrintersProperty, Rdr) {
    forEachSeed([](Random &random) {
        const std::uint32_t floatAccuracy = below(random, 2);
        expectShowsOnlyTheRecord<SaHpiRdrT>(
            random,
            [&](const SaHpiRdrT &from, SaHpiRdrT &to) { copyShown(from, to, floatAccuracy); },
            [&](zuSaHpiHandleT out, const SaHpiRdrT &rdr, const char *indent) {
                return zuSaHpiRdrDisplay(out, &rdr, indent, floatAccuracy);
            });
    });
}

TEST(PrintersProperty, SensorReading) {
    forEachSeed([](Random &random) {
        const int mode = below(random, 2) == 0 ? 0 : 1;
        expectShowsOnlyTheRecord<SaHpiSensorReadingT>(
            random,
            [](const SaHpiSensorReadingT &from, SaHpiSensorReadingT &to) { copyShown(from, to); },
            [&](zuSaHpiHandleT out, const SaHpiSensorReadingT &reading, const char *indent) {
                return zuSaHpiSensorReadingDisplay(out, "Label", &reading, mode, indent);
            });
    });
}

// The line of a value alone stays open, and a line end closes it to that of the other modes.
TEST(PrintersProperty, AnOpenLineLacksOnlyItsEnd) {
    forEachSeed([](Random &random) {
        const auto reading = randomRecord<SaHpiSensorReadingT>(random);
        steer(random, *reading);
        const auto textIn = [&](int mode) {
            return printedBy([&](zuSaHpiHandleT out) {
                       return zuSaHpiSensorReadingDisplay(out, "", reading.get(), mode, "> ");
                   })
                .text;
        };
        const std::string open = textIn(2);
        EXPECT_EQ(textIn(1), endsLine(open) ? open : open + "\n");
        const bool isDump = reading->IsSupported != SAHPI_FALSE &&
                            reading->Type == SAHPI_SENSOR_READING_TYPE_BUFFER;
        EXPECT_EQ(endsLine(open), isDump);
    });
}

// Text of every type, width and length, in memory of its own size.
TEST(PrintersProperty, TextControl) {
    forEachSeed([](Random &random) {
        std::vector<SaHpiUint8T> data(below(random, 600));
        random_records::fill(random, std::as_writable_bytes(std::span(data)));
        const auto maxChars = static_cast<SaHpiUint8T>(below(random, 4) * below(random, 85));
        const auto type = static_cast<SaHpiTextTypeT>(below(random, 6));
        const int framed = static_cast<int>(below(random, 2));
        const std::vector<char> indent = random_records::randomIndent(random);
        const auto textFor = [&](SaHpiLanguageT language) {
            return printedBy([&](zuSaHpiHandleT out) {
                       return zuSaHpiTextControlDisplay(
                           out, data.data(), static_cast<uint32_t>(data.size()), maxChars, type,
                           language, framed, indent.data());
                   })
                .text;
        };
        const std::string text = textFor(SAHPI_LANG_ENGLISH);
        EXPECT_EQ(textFor(static_cast<SaHpiLanguageT>(random.engine() >> 32)), text);
        EXPECT_TRUE(text.empty() ? data.empty() : endsLine(text)) << text;
    });
}

// The steering reaches what the properties are about.
TEST(PrintersProperty, EveryTypeIsAmongTheRecords) {
    std::vector<int> events(10);
    std::vector<int> records(7);
    std::vector<int> controls(5);
    forEachSeed([&](Random &random) {
        const auto event = randomRecord<SaHpiEventT>(random);
        steer(random, *event);
        ++events[std::min<std::size_t>(event->EventType, 9)];
        const auto rdr = randomRecord<SaHpiRdrT>(random);
        steer(random, *rdr);
        ++records[std::min<std::size_t>(rdr->RdrType, 6)];
        if (rdr->RdrType == SAHPI_CTRL_RDR) {
            ++controls[std::min<std::size_t>(rdr->RdrTypeUnion.CtrlRec.Type, 4)];
        }
    });
    EXPECT_GT(*std::min_element(events.begin(), events.end()), 50);
    EXPECT_GT(*std::min_element(records.begin(), records.end()), 50);
    EXPECT_GT(*std::min_element(controls.begin(), controls.end()), 10);
}

} // namespace
