// Goal: an entry is one JSON object with the keys of the HPI standard; what an entry does not have,
// what has no name and what has no place in JSON is null; every text is UTF-8.
#include "tools/evtlogctl/entry_json.h"

#include <cstring>
#include <limits>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "tests/evtlogctl/plain_entries.h"
#include "tests/evtlogctl/sel_samples.h"

namespace {

using namespace zusahpi;
using plain_entries::putText;
using rapidjson::Document;
using rapidjson::Value;

std::string jsonOf(const EventLogEntryRecord &entry) {
    std::string text;
    evtlogctl::appendEntryJson(text, entry);
    return text;
}

Document parsed(const EventLogEntryRecord &entry) {
    const std::string text = jsonOf(entry);
    Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag>(
        text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

// With the time in the entry and none in the event.
EventLogEntryRecord entryOfType(SaHpiEventTypeT type) {
    EventLogEntryRecord entry = plain_entries::plainEntry(type);
    entry.entry.Timestamp = plain_entries::happened;
    entry.entry.Event.Timestamp = SAHPI_TIME_UNSPECIFIED;
    return entry;
}

TEST(EntryJson, AWholeEntry) {
    EventLogEntryRecord entry = entryOfType(SAHPI_ET_USER);
    SaHpiTextBufferT &text = entry.entry.Event.EventDataUnion.UserEvent.UserEventData;
    text.Language = SAHPI_LANG_ENGLISH;
    putText(text, "fan \"3\"\n");
    EXPECT_EQ(jsonOf(entry),
              R"({"EntryId":7,"Timestamp":1702959411250000000,)"
              R"("TimestampTime":"2023-12-19T04:16:51.250000000Z",)"
              R"("Message":"User: fan \"3\".","Event":{"Source":5,"SourceName":null,)"
              R"("EventType":8,"EventTypeName":"SAHPI_ET_USER",)"
              R"("Timestamp":-9223372036854775808,"TimestampTime":null,)"
              R"("Severity":1,"SeverityName":"SAHPI_MAJOR","UserEvent":{"UserEventData":{)"
              R"("DataType":3,"DataTypeName":"SAHPI_TL_TYPE_TEXT",)"
              R"("Language":25,"LanguageName":"SAHPI_LANG_ENGLISH",)"
              R"("Text":"fan \"3\"\n","Data":"66616e202233220a"}}},)"
              R"("Rpt":null,"Rdr":null,"SelRecord":null})");
}

TEST(EntryJson, AnImportedEntryHasItsParts) {
    const auto records = sel_samples::recordsOf(sel_samples::exampleFile("server.sel"));
    ASSERT_FALSE(records.empty());
    const Document object = parsed(sel_samples::entryOf(records.front(), 1));
    EXPECT_STREQ(object["Rdr"]["RdrTypeName"].GetString(), "SAHPI_SENSOR_RDR");
    EXPECT_EQ(object["Rdr"]["SensorRec"]["Num"].GetUint(),
              object["Event"]["SensorEvent"]["SensorNum"].GetUint());
    EXPECT_STREQ(object["Rpt"]["ResourceEntity"][0]["EntityTypeName"].GetString(),
                 "SAHPI_ENT_ROOT");
    EXPECT_EQ(object["Rpt"]["ResourceEntity"].Size(), 1U);
    EXPECT_EQ(object["SelRecord"].GetStringLength(), 32U);
}

TEST(EntryJson, ReadingsOfEveryType) {
    EventLogEntryRecord entry = entryOfType(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &event = entry.entry.Event.EventDataUnion.SensorEvent;
    event.OptionalDataPresent = SAHPI_SOD_TRIGGER_READING;
    SaHpiSensorReadingT &reading = event.TriggerReading;
    const auto value = [&entry] {
        Document object = parsed(entry);
        std::string text = jsonOf(entry);
        const std::size_t begin = text.find("\"Value\":") + 8;
        return text.substr(begin, text.find('}', begin) - begin);
    };
    const auto isNull = [&entry](const char *name) {
        return parsed(entry)["Event"]["SensorEvent"][name].IsNull();
    };
    EXPECT_TRUE(isNull("TriggerReading")); // present, but not supported
    reading.IsSupported = SAHPI_TRUE;
    EXPECT_TRUE(isNull("TriggerThreshold"));
    reading.Type = SAHPI_SENSOR_READING_TYPE_INT64;
    reading.Value.SensorInt64 = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(value(), "-9223372036854775808");
    reading.Type = SAHPI_SENSOR_READING_TYPE_UINT64;
    reading.Value.SensorUint64 = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(value(), "18446744073709551615");
    reading.Type = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    for (const double number : {91.5, -0.1, 1e300, 5e-324}) {
        reading.Value.SensorFloat64 = number;
        EXPECT_EQ(std::strtod(value().c_str(), nullptr), number);
    }
    for (const double number :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        reading.Value.SensorFloat64 = number;
        EXPECT_EQ(value(), "null");
    }
    reading.Type = SAHPI_SENSOR_READING_TYPE_BUFFER;
    std::memset(reading.Value.SensorBuffer, 0xA5, sizeof reading.Value.SensorBuffer);
    EXPECT_EQ(value().size(), 2 * sizeof reading.Value.SensorBuffer + 2);
    EXPECT_EQ(value().substr(0, 5), "\"a5a5");
    reading.Type = static_cast<SaHpiSensorReadingTypeT>(9);
    EXPECT_EQ(value(), "null");
    event.OptionalDataPresent = 0;
    EXPECT_TRUE(isNull("TriggerReading"));
}

TEST(EntryJson, StatesHaveTheNamesOfTheirCategory) {
    EventLogEntryRecord entry = entryOfType(SAHPI_ET_SENSOR);
    SaHpiSensorEventT &event = entry.entry.Event.EventDataUnion.SensorEvent;
    event.EventCategory = SAHPI_EC_THRESHOLD;
    event.EventState = SAHPI_ES_LOWER_MINOR | SAHPI_ES_UPPER_CRIT | 0x8000;
    event.OptionalDataPresent = SAHPI_SOD_PREVIOUS_STATE | SAHPI_SOD_OEM;
    event.PreviousState = SAHPI_ES_LOWER_MAJOR;
    event.Oem = 4;
    const Document object = parsed(entry);
    const Value &sensor = object["Event"]["SensorEvent"];
    EXPECT_EQ(sensor["EventState"].GetUint(), 0x8021U);
    ASSERT_EQ(sensor["EventStateNames"].Size(), 3U);
    EXPECT_STREQ(sensor["EventStateNames"][0].GetString(), "SAHPI_ES_LOWER_MINOR");
    EXPECT_STREQ(sensor["EventStateNames"][1].GetString(), "SAHPI_ES_UPPER_CRIT");
    EXPECT_TRUE(sensor["EventStateNames"][2].IsNull());
    EXPECT_STREQ(sensor["PreviousStateNames"][0].GetString(), "SAHPI_ES_LOWER_MAJOR");
    EXPECT_TRUE(sensor["CurrentState"].IsNull());
    EXPECT_TRUE(sensor["CurrentStateNames"].IsNull());
    EXPECT_EQ(sensor["Oem"].GetUint(), 4U);
    EXPECT_TRUE(sensor["SensorSpecific"].IsNull());
}

TEST(EntryJson, WhatHasNoNameIsANumberWithANullName) {
    EventLogEntryRecord entry = entryOfType(static_cast<SaHpiEventTypeT>(77));
    entry.entry.Event.Severity = static_cast<SaHpiSeverityT>(99);
    entry.rdr.RdrType = static_cast<SaHpiRdrTypeT>(66);
    const Document object = parsed(entry);
    EXPECT_EQ(object["Event"]["EventType"].GetUint(), 77U);
    EXPECT_TRUE(object["Event"]["EventTypeName"].IsNull());
    EXPECT_EQ(object["Event"]["Severity"].GetUint(), 99U);
    EXPECT_TRUE(object["Event"]["SeverityName"].IsNull());
    EXPECT_EQ(object["Event"].MemberCount(), 8U);
    EXPECT_EQ(object["Rdr"]["RdrType"].GetUint(), 66U);
    EXPECT_TRUE(object["Rdr"]["RdrTypeName"].IsNull());
    EXPECT_EQ(object["Rdr"].MemberCount(), 6U);
}

TEST(EntryJson, TextsAreUtf8AndTheirBytesAreThereToo) {
    EventLogEntryRecord entry = entryOfType(SAHPI_ET_USER);
    SaHpiTextBufferT &text = entry.entry.Event.EventDataUnion.UserEvent.UserEventData;
    const auto data = [&entry](Document &object) -> const Value & {
        object = parsed(entry);
        return object["Event"]["UserEvent"]["UserEventData"];
    };
    Document object;
    putText(text, "L\xFC"
                  "fter");
    EXPECT_STREQ(data(object)["Text"].GetString(), "L\xEF\xBF\xBD"
                                                   "fter");
    EXPECT_STREQ(data(object)["Data"].GetString(), "4cfc66746572");
    putText(text, std::string_view("a\0b", 3));
    EXPECT_EQ(data(object)["Text"].GetStringLength(), 3U);
    putText(text, "ab", SAHPI_TL_TYPE_BINARY);
    EXPECT_TRUE(data(object)["Text"].IsNull());
    EXPECT_STREQ(data(object)["Data"].GetString(), "6162");
}

TEST(EntryJson, TimesThatAreNoTimeOfDay) {
    EventLogEntryRecord entry = entryOfType(SAHPI_ET_RESOURCE);
    for (const SaHpiTimeT time : {SAHPI_TIME_UNSPECIFIED, SaHpiTimeT{0}, SaHpiTimeT{-1},
                                  SaHpiTimeT{42'000'000'000}, SAHPI_TIME_MAX_RELATIVE}) {
        entry.entry.Timestamp = time;
        const Document object = parsed(entry);
        EXPECT_EQ(object["Timestamp"].GetInt64(), time);
        EXPECT_TRUE(object["TimestampTime"].IsNull()) << time;
    }
    entry.entry.Timestamp = SAHPI_TIME_MAX_RELATIVE + 1;
    EXPECT_STREQ(parsed(entry)["TimestampTime"].GetString(), "1997-05-26T23:58:48.455135233Z");
    entry.entry.Timestamp = std::numeric_limits<std::int64_t>::max();
    EXPECT_STREQ(parsed(entry)["TimestampTime"].GetString(), "2262-04-11T23:47:16.854775807Z");
}

} // namespace
