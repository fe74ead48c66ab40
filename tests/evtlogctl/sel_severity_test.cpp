// Goal: the built-in table gives each event the severity that it should have; a user's table
// replaces it whole, and mistakes in one are told with their line.
#include "tools/evtlogctl/sel_severity.h"

#include <gtest/gtest.h>

#include "tests/evtlogctl/sel_samples.h"
#include "tests/support/files.h"
#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/sel_mapping.h"

namespace {

using namespace zusahpi::sel;
using zusahpi::evtlogctl::Failure;

SaHpiSeverityT builtIn(std::uint8_t category, unsigned state, bool asserted = true,
                       std::uint8_t sensorType = 0x01) {
    return severityOf(
        {.category = category, .sensorType = sensorType, .state = state, .asserted = asserted},
        builtInSeverities());
}

SaHpiSeverityT specific(std::uint8_t sensorType, unsigned state, bool asserted = true) {
    return builtIn(SAHPI_EC_SENSOR_SPECIFIC, state, asserted, sensorType);
}

TEST(SelSeverity, Thresholds) {
    const SaHpiSeverityT expected[] = {SAHPI_MINOR, SAHPI_MAJOR, SAHPI_CRITICAL,
                                       SAHPI_MINOR, SAHPI_MAJOR, SAHPI_CRITICAL};
    for (unsigned state = 0; state < std::size(expected); ++state) {
        EXPECT_EQ(builtIn(SAHPI_EC_THRESHOLD, state), expected[state]);
        EXPECT_EQ(builtIn(SAHPI_EC_THRESHOLD, state, false), SAHPI_INFORMATIONAL);
    }
}

TEST(SelSeverity, GenericCategories) {
    const std::pair<std::uint8_t, std::vector<SaHpiSeverityT>> rows[] = {
        {SAHPI_EC_SEVERITY,
         {SAHPI_OK, SAHPI_MINOR, SAHPI_MAJOR, SAHPI_CRITICAL, SAHPI_MINOR, SAHPI_MAJOR,
          SAHPI_CRITICAL, SAHPI_INFORMATIONAL, SAHPI_INFORMATIONAL}},
        {SAHPI_EC_PRED_FAIL, {SAHPI_OK, SAHPI_MINOR}},
        {SAHPI_EC_LIMIT, {SAHPI_OK, SAHPI_MINOR}},
        {SAHPI_EC_PERFORMANCE, {SAHPI_OK, SAHPI_MINOR}},
        {SAHPI_EC_AVAILABILITY,
         {SAHPI_INFORMATIONAL, SAHPI_INFORMATIONAL, SAHPI_INFORMATIONAL, SAHPI_INFORMATIONAL,
          SAHPI_INFORMATIONAL, SAHPI_INFORMATIONAL, SAHPI_MINOR, SAHPI_INFORMATIONAL, SAHPI_MAJOR}},
        {SAHPI_EC_REDUNDANCY,
         {SAHPI_OK, SAHPI_MAJOR, SAHPI_MINOR, SAHPI_MINOR, SAHPI_MINOR, SAHPI_MAJOR, SAHPI_MINOR,
          SAHPI_MINOR}},
    };
    for (const auto &[category, severities] : rows) {
        for (unsigned state = 0; state < severities.size(); ++state) {
            EXPECT_EQ(builtIn(category, state), severities[state]) << int{category} << " " << state;
            EXPECT_EQ(builtIn(category, state, false), SAHPI_INFORMATIONAL);
        }
    }
    for (const std::uint8_t category :
         {SAHPI_EC_UNSPECIFIED, SAHPI_EC_USAGE, SAHPI_EC_STATE, SAHPI_EC_PRESENCE, SAHPI_EC_ENABLE,
          SAHPI_EC_GENERIC, oemCategory}) {
        for (unsigned state = 0; state <= 14; ++state) {
            EXPECT_EQ(builtIn(category, state), SAHPI_INFORMATIONAL) << int{category};
        }
    }
}

TEST(SelSeverity, SensorSpecificEvents) {
    EXPECT_EQ(specific(0x0C, 1), SAHPI_CRITICAL); // memory: uncorrectable error
    EXPECT_EQ(specific(0x0C, 0), SAHPI_MINOR);    // correctable error
    EXPECT_EQ(specific(0x0C, 5), SAHPI_MAJOR);    // too many of them
    EXPECT_EQ(specific(0x07, 0), SAHPI_CRITICAL); // processor: IERR
    EXPECT_EQ(specific(0x07, 1), SAHPI_CRITICAL); // thermal trip
    EXPECT_EQ(specific(0x07, 7), SAHPI_INFORMATIONAL);
    EXPECT_EQ(specific(0x08, 0), SAHPI_INFORMATIONAL); // power supply: presence
    EXPECT_EQ(specific(0x08, 1), SAHPI_CRITICAL);      // failure
    EXPECT_EQ(specific(0x08, 2), SAHPI_MINOR);         // predictive failure
    EXPECT_EQ(specific(0x0D, 1), SAHPI_MAJOR);         // drive fault
    EXPECT_EQ(specific(0x10, 2), SAHPI_INFORMATIONAL); // log cleared
    EXPECT_EQ(specific(0x13, 9), SAHPI_CRITICAL);      // fatal NMI
    EXPECT_EQ(specific(0x20, 1), SAHPI_CRITICAL);      // OS run-time critical stop
    EXPECT_EQ(specific(0x20, 3), SAHPI_INFORMATIONAL); // OS graceful shutdown
    EXPECT_EQ(specific(0xE1, 3), SAHPI_INFORMATIONAL);
    for (unsigned type = 0; type <= 0xFF; ++type) {
        for (unsigned state = 0; state <= 14; ++state) {
            EXPECT_EQ(specific(static_cast<std::uint8_t>(type), state, false), SAHPI_INFORMATIONAL);
        }
    }
}

TEST(SelSeverity, AnEventWithoutAState) {
    EXPECT_EQ(severityOf({.category = SAHPI_EC_SENSOR_SPECIFIC,
                          .sensorType = 0x07,
                          .state = {},
                          .asserted = true},
                         builtInSeverities()),
              SAHPI_INFORMATIONAL);
}

TEST(SelSeverity, TheBuiltInTableAsTextReadsBack) {
    EXPECT_EQ(parseSeverities(severityText(builtInSeverities()), "built in"), builtInSeverities());
}

// So that a user can begin with a copy of it.
TEST(SelSeverity, TheExampleTableIsTheBuiltInOne) {
    const std::string file = sel_samples::exampleFile("severity.table");
    EXPECT_EQ(parseSeverities(test_support::readFile(file), file), builtInSeverities());
}

TEST(SelSeverity, EveryFormOfARule) {
    const SeverityTable table = parseSeverities("# comment\n"
                                                "\n"
                                                "threshold 2 asserted critical # hot\n"
                                                "sensor-specific/0x0C * * major\r\n"
                                                "\toem - deasserted debug",
                                                "table");
    ASSERT_EQ(table.size(), 3U);
    EXPECT_EQ(table[0], (SeverityRule{.category = SAHPI_EC_THRESHOLD,
                                      .sensorType = {},
                                      .everyState = false,
                                      .state = 2,
                                      .asserted = true,
                                      .severity = SAHPI_CRITICAL}));
    EXPECT_EQ(table[1], (SeverityRule{.category = SAHPI_EC_SENSOR_SPECIFIC,
                                      .sensorType = 0x0C,
                                      .everyState = true,
                                      .state = {},
                                      .asserted = {},
                                      .severity = SAHPI_MAJOR}));
    EXPECT_EQ(table[2], (SeverityRule{.category = oemCategory,
                                      .sensorType = {},
                                      .everyState = false,
                                      .state = {},
                                      .asserted = false,
                                      .severity = SAHPI_DEBUG}));
}

TEST(SelSeverity, TheFirstRuleThatFitsDecides) {
    const SeverityTable table = parseSeverities("sensor-specific/0x07 0 asserted minor\n"
                                                "sensor-specific 0 * major\n"
                                                "sensor-specific * * ok\n",
                                                "table");
    const auto severity = [&](std::uint8_t type, std::optional<unsigned> state, bool asserted) {
        return severityOf({.category = SAHPI_EC_SENSOR_SPECIFIC,
                           .sensorType = type,
                           .state = state,
                           .asserted = asserted},
                          table);
    };
    EXPECT_EQ(severity(0x07, 0, true), SAHPI_MINOR);
    EXPECT_EQ(severity(0x07, 0, false), SAHPI_MAJOR);
    EXPECT_EQ(severity(0x08, 0, true), SAHPI_MAJOR);
    EXPECT_EQ(severity(0x08, 1, true), SAHPI_OK);
    EXPECT_EQ(severity(0x08, std::nullopt, true), SAHPI_OK);
}

TEST(SelSeverity, AUsersTableReplacesTheBuiltInOneWhole) {
    const SeverityTable table = parseSeverities("oem * * debug\n", "table");
    const Mapping mapping{.utcOffset = 0, .oemOrder = OemOrder::wire, .severities = &table};
    const auto severity = [&](const char *bytes) {
        return toEvent(sel_samples::record(bytes), mapping).event.Severity;
    };
    EXPECT_EQ(severity("03 00 dd 33 19 81 65 37 01 00 00 01 00 02 80 00"), SAHPI_DEBUG);
    EXPECT_EQ(severity("12 00 02 33 19 81 65 20 00 04 07 c1 6f 00 ff ff"), SAHPI_INFORMATIONAL);
}

TEST(SelSeverity, MistakesAreToldWithTheirLine) {
    const std::pair<const char *, const char *> rows[] = {
        {"threshold 2 asserted", "t:1: 3 words instead of CATEGORY STATE DIRECTION SEVERITY"},
        {"\nthreshold 2 asserted critical now", "t:2: 5 words instead of"},
        {"thresholds 2 asserted critical", "t:1: \"thresholds\" is no event category"},
        {"threshold 15 asserted critical", "t:1: \"15\" is no state (0 to 14, - or *)"},
        {"threshold 1x asserted critical", "t:1: \"1x\" is no state"},
        {"threshold 1 up critical", "t:1: \"up\" is no direction"},
        {"threshold 1 asserted bad", "t:1: \"bad\" is no severity"},
        {"sensor-specific/7 1 * ok", "t:1: \"7\" is no sensor type (0x00 to 0xFF)"},
        {"sensor-specific/0x100 1 * ok", "t:1: \"0x100\" is no sensor type"},
        {"thres\x1B[2Jhold\xFF 1 * ok", "t:1: \"thres.[2Jhold.\" is no event category"},
    };
    for (const auto &[text, expected] : rows) {
        try {
            (void)parseSeverities(text, "t");
            ADD_FAILURE() << text;
        } catch (const Failure &failure) {
            EXPECT_EQ(std::string(failure.what()).substr(0, std::string(expected).size()),
                      expected);
        }
    }
}

TEST(SelSeverity, Names) {
    EXPECT_EQ(severityName(SAHPI_CRITICAL), "critical");
    EXPECT_EQ(severityName(SAHPI_DEBUG), "debug");
    EXPECT_EQ(severityName(SAHPI_ALL_SEVERITIES), "255");
    EXPECT_EQ(severityName(static_cast<SaHpiSeverityT>(7)), "7");
}

} // namespace
