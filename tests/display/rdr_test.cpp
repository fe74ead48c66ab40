// Goal: the head of every record, the body of every record type, and the empty line that ends it.

#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/display/printed.h"
#include "tests/display/records.h"
#include "zuSaHpi_util.h"

namespace {

// Unused bytes of the union are not 0.
SaHpiRdrT recordOf(uint32_t type) {
    SaHpiRdrT rdr;
    std::memset(&rdr, 0xA5, sizeof rdr);
    rdr.RecordId = 12;
    rdr.RdrType = static_cast<SaHpiRdrTypeT>(type);
    rdr.Entity = emptyPath();
    rdr.IsFru = SAHPI_FALSE;
    rdr.IdString = textBuffer(SAHPI_TL_TYPE_TEXT, "Id");
    return rdr;
}

std::string rdrHead(const std::string &instrument, const std::string &indent = "") {
    const std::string lines = indent + std::string(10, ' ');
    return indent + "RDR Record # 12\n" + indent + instrument + "\n" + indent + "IdString: \n" +
           lines + "DataType     3: Text\n" + lines + "Language     25: English\n" + lines +
           "DataLength   2\n" + lines + "Data = \"Id\"\n";
}

Printed display(const SaHpiRdrT &rdr, const char *indent = "", uint32_t floatAccuracy = 0) {
    const auto copy = std::make_unique<SaHpiRdrT>(rdr);
    return printedBy([&](zuSaHpiHandleT out) {
        return zuSaHpiRdrDisplay(out, copy.get(), indent, floatAccuracy);
    });
}

std::string headLinesOf(const std::string &text) {
    return text.substr(0, text.find("> IdString"));
}

TEST(Rdr, APrivateRecordHasNoNumber) {
    SaHpiRdrT rdr = recordOf(0);
    rdr.RecordId = 0xFFFFFFFF;
    EXPECT_EQ(headLinesOf(display(rdr, "> ").text), "> Private RDR Record\n> ??? 0\n");
    rdr.RecordId = 0xFFFFFFFE;
    EXPECT_EQ(headLinesOf(display(rdr, "> ").text), "> RDR Record # 4294967294\n> ??? 0\n");
}

TEST(Rdr, UnknownTypesHaveNoNumberAndNoIndent) {
    for (const uint32_t type : {0U, 6U, 0x80000000U, 0xFFFFFFFFU}) {
        const Printed printed = display(recordOf(type), "> ");
        EXPECT_EQ(printed.text, rdrHead("??? 0", "> ") + "Unknown RDR Type\n\n");
        EXPECT_EQ(printed.result, 1);
    }
}

TEST(Rdr, EntityAndFruFlag) {
    SaHpiRdrT rdr = recordOf(0);
    rdr.Entity = boardPath();
    rdr.IsFru = 0x80;
    EXPECT_EQ(display(rdr).text, "RDR Record # 12\n"
                                 "??? 0\n"
                                 "Entity = 7,3: System Board 3\n"
                                 "         65536,0: Rack 0\n"
                                 "Entity IsFru flag is set\n"
                                 "IdString: \n"
                                 "          DataType     3: Text\n"
                                 "          Language     25: English\n"
                                 "          DataLength   2\n"
                                 "          Data = \"Id\"\n"
                                 "Unknown RDR Type\n"
                                 "\n");
}

TEST(Rdr, Control) {
    SaHpiRdrT rdr = recordOf(SAHPI_CTRL_RDR);
    SaHpiCtrlRecT &control = rdr.RdrTypeUnion.CtrlRec;
    control.Num = 0xFFFFFFFF;
    control.OutputType = SAHPI_CTRL_GENERIC;
    control.Type = SAHPI_CTRL_TYPE_DIGITAL;
    control.TypeUnion.Digital.Default = SAHPI_CTRL_STATE_ON;
    control.DefaultMode = {SAHPI_CTRL_MODE_AUTO, SAHPI_FALSE};
    control.WriteOnly = SAHPI_FALSE;
    control.Oem = 0;
    EXPECT_EQ(display(rdr, "> ").text, rdrHead("Control 4294967295", "> ") +
                                           "\n"
                                           "> Control Output Type  0: Generic\n"
                                           "> Control Type         0: Digital\n"
                                           "> Default Mode         0: Auto\n"
                                           "> Default State        1: On\n"
                                           "Oem Value: 0\n"
                                           "\n");
}

SaHpiRdrT fullSensor() {
    SaHpiRdrT rdr = recordOf(SAHPI_SENSOR_RDR);
    rdr.Entity = boardPath();
    rdr.IsFru = SAHPI_TRUE;
    rdr.IdString = textBuffer(SAHPI_TL_TYPE_TEXT, "Temp");
    SaHpiSensorRecT &sensor = rdr.RdrTypeUnion.SensorRec;
    sensor.Num = 7;
    sensor.Type = SAHPI_TEMPERATURE;
    sensor.Category = SAHPI_EC_THRESHOLD;
    sensor.EnableCtrl = SAHPI_TRUE;
    sensor.EventCtrl = SAHPI_SEC_READ_ONLY_MASKS;
    sensor.Events = 0x3F;
    SaHpiSensorDataFormatT &format = sensor.DataFormat;
    format.ReadingType = SAHPI_SENSOR_READING_TYPE_FLOAT64;
    format.BaseUnits = SAHPI_SU_DEGREES_C;
    format.ModifierUnits = SAHPI_SU_SECOND;
    format.ModifierUse = SAHPI_SMUU_BASIC_OVER_MODIFIER;
    format.Percentage = SAHPI_TRUE;
    format.Range.Flags = 0x1F;
    format.Range.Min = floatReading(-10.5);
    format.Range.Max = intReading(125);
    format.Range.NormalMin.IsSupported = SAHPI_FALSE;
    format.Range.NormalMax = readingOfBytes(SAHPI_SENSOR_READING_TYPE_UINT64, 1);
    format.Range.Nominal = readingOfBytes(SAHPI_SENSOR_READING_TYPE_BUFFER, 'A');
    const uint32_t units = 10050;
    std::memcpy(&format.AccuracyFactor, &units, sizeof units);
    sensor.ThresholdDefn = {
        .IsAccessible = SAHPI_TRUE, .ReadThold = 0xFF, .WriteThold = 0, .Nonlinear = SAHPI_FALSE};
    sensor.Oem = 0xFFFFFFFF;
    return rdr;
}

TEST(Rdr, Sensor) {
    EXPECT_EQ(display(fullSensor(), "  ").text, expectedText("sensor_record.txt"));
}

TEST(Rdr, TheCallerChoosesTheAccuracysEncoding) {
    SaHpiRdrT rdr = fullSensor();
    rdr.RdrTypeUnion.SensorRec.DataFormat.AccuracyFactor = 0.25;
    EXPECT_NE(display(rdr, "", 1).text.find("Accuracy      25.0000%\n"), std::string::npos);
    EXPECT_NE(display(rdr, "", 0).text.find("Accuracy      0.0%\n"), std::string::npos);
}

TEST(Rdr, Inventory) {
    SaHpiRdrT rdr = recordOf(SAHPI_INVENTORY_RDR);
    rdr.RdrTypeUnion.InventoryRec = {.IdrId = 0, .Persistent = 0x80, .Oem = 0xFFFFFFFF};
    EXPECT_EQ(display(rdr, "> ").text, rdrHead("Inventory 0", "> ") + "> Persistent = Yes\n"
                                                                      "> Oem = 4294967295\n"
                                                                      "\n");
    rdr.RdrTypeUnion.InventoryRec = {.IdrId = 0x80000000, .Persistent = 0, .Oem = 1};
    EXPECT_EQ(display(rdr).text, rdrHead("Inventory 2147483648") + "Persistent = No\n"
                                                                   "Oem = 1\n"
                                                                   "\n");
}

TEST(Rdr, Watchdog) {
    SaHpiRdrT rdr = recordOf(SAHPI_WATCHDOG_RDR);
    rdr.RdrTypeUnion.WatchdogRec = {.WatchdogNum = 0x80000000, .Oem = 0xFFFFFFFF};
    EXPECT_EQ(display(rdr, "> ").text,
              rdrHead("Watchdog 2147483648", "> ") + "> Oem = 4294967295\n\n");
}

TEST(Rdr, Annunciator) {
    SaHpiRdrT rdr = recordOf(SAHPI_ANNUNCIATOR_RDR);
    rdr.RdrTypeUnion.AnnunciatorRec = {.AnnunciatorNum = 3,
                                       .AnnunciatorType = SAHPI_ANNUNCIATOR_TYPE_LCD_DISPLAY,
                                       .ModeReadOnly = 0x80,
                                       .MaxConditions = 0xFFFFFFFF,
                                       .Oem = 0x80000000};
    EXPECT_EQ(display(rdr, "> ").text, rdrHead("Annunciator 3", "> ") +
                                           "> Type 3: Lcd Display\n"
                                           "> Read Only Mode\n"
                                           "> Max Conditions = 4294967295\n"
                                           "> Oem = 2147483648\n"
                                           "\n");
    rdr.RdrTypeUnion.AnnunciatorRec = {.AnnunciatorNum = 0xFFFFFFFF,
                                       .AnnunciatorType =
                                           static_cast<SaHpiAnnunciatorTypeT>(0xFFFFFFFF),
                                       .ModeReadOnly = SAHPI_FALSE,
                                       .MaxConditions = 0,
                                       .Oem = 0};
    EXPECT_EQ(display(rdr).text, rdrHead("Annunciator 4294967295") + "Type 4294967295\n"
                                                                     "Max Conditions = 0\n"
                                                                     "Oem = 0\n"
                                                                     "\n");
}

TEST(Rdr, DataAndIndentAreNoFormats) {
    SaHpiRdrT rdr = recordOf(SAHPI_WATCHDOG_RDR);
    rdr.RdrTypeUnion.WatchdogRec = {.WatchdogNum = 1, .Oem = 2};
    rdr.IdString = textBuffer(SAHPI_TL_TYPE_TEXT, "%n");
    const std::string text = display(rdr, "%s").text;
    EXPECT_NE(text.find("%s          Data = \"%n\"\n%sOem = 2\n\n"), std::string::npos);
}

} // namespace
