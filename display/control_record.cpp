// Control records: what all controls have in common, then the defaults by control type. Lengths in
// a record are not to be trusted: a dump never goes past the array that holds its bytes.

#include "display/control_record.h"

#include <algorithm>

#include "display/indent.h"
#include "display/named_type.h"
#include "display/words.h"
#include "util/hex_dump.h"
#include "zuSaHpi_mainlib.h"

namespace zusahpi::display {
namespace {

constexpr std::size_t defaultBlanks = 3;

void printAnalog(zuSaHpiHandleT out, const SaHpiCtrlRecAnalogT &analog, const char *indent) {
    zuSaHpiPrintf(out, "%sDefault State       %d\n", indent, analog.Default);
    zuSaHpiPrintf(out, "%sMinimum Value       %d\n", indent, analog.Min);
    zuSaHpiPrintf(out, "%sMaximum Value       %d\n", indent, analog.Max);
}

void printStream(zuSaHpiHandleT out, const SaHpiCtrlStateStreamT &stream, const char *indent) {
    constexpr std::uint32_t capacity = sizeof stream.Stream;
    zuSaHpiPrintf(out, "%sDefault State -\n", indent);
    zuSaHpiPrintf(out, "%s   Repeat         %s\n", indent, upperYesOrNo(stream.Repeat));
    zuSaHpiPrintf(out, "%s   Stream Length  %u\n", indent, stream.StreamLength);
    zuSaHpiPrintf(out, "%s   Stream         ", indent);
    zuSaHpiDprint(out, stream.Stream, std::min(stream.StreamLength, capacity), indent);
}

void printText(zuSaHpiHandleT out, const SaHpiCtrlRecTextT &control, const char *indent) {
    constexpr int framed = 1;
    const SaHpiTextBufferT &text = control.Default.Text;
    zuSaHpiPrintf(out, "%sMax Chars  %u\n", indent, control.MaxChars);
    zuSaHpiPrintf(out, "%sMax Lines  %u\n", indent, control.MaxLines);
    printValue(out, "Language   ", control.Language, named_type::language, indent);
    printValue(out, "Data Type  ", control.DataType, named_type::textType, indent);
    zuSaHpiPrintf(out, "%sDefault -\n", indent);
    printValue(out, "   Line Number     ", control.Default.Line, named_type::txtLineNum, indent);
    printValue(out, "   Buffer DataType ", text.DataType, named_type::textType, indent);
    printValue(out, "   Buffer Language ", text.Language, named_type::language, indent);
    zuSaHpiPrintf(out, "%s   Buffer Length    %u\n", indent, text.DataLength);
    zuSaHpiTextControlDisplay(out, text.Data, text.DataLength, control.MaxChars, text.DataType,
                              text.Language, framed, composedIndent(indent, defaultBlanks).text);
}

void printOemBody(zuSaHpiHandleT out, const SaHpiCtrlStateOemT &state, const char *indent) {
    static_assert(sizeof state.Body >= SAHPI_CTRL_MAX_OEM_BODY_LENGTH);
    if (state.BodyLength <= hexDumpBytesPerLine) {
        zuSaHpiPrintf(out, "%s   Body           ", indent);
        zuSaHpiDprint(out, state.Body, state.BodyLength, "");
        return;
    }
    zuSaHpiPrintf(out, "%s   Body -\n", indent);
    zuSaHpiDprint(out, state.Body, state.BodyLength, composedIndent(indent, defaultBlanks).text);
}

void printOem(zuSaHpiHandleT out, const SaHpiCtrlRecOemT &oem, const char *indent) {
    zuSaHpiPrintf(out, "%sManufacturerId %u\n", indent, oem.MId);
    zuSaHpiPrintf(out, "%sConfig Data    ", indent);
    zuSaHpiDprint(out, oem.ConfigData, sizeof oem.ConfigData, indent);
    zuSaHpiPrintf(out, "%sDefault -\n", indent);
    zuSaHpiPrintf(out, "%s   ManufacturerId %u\n", indent, oem.Default.MId);
    zuSaHpiPrintf(out, "%s   BodyLength     %u\n", indent, oem.Default.BodyLength);
    printOemBody(out, oem.Default, indent);
}

void printDefaults(zuSaHpiHandleT out, const SaHpiCtrlRecT &record, const char *indent) {
    const SaHpiCtrlRecUnionT &data = record.TypeUnion;
    switch (record.Type) {
    case SAHPI_CTRL_TYPE_DIGITAL:
        printValue(out, "Default State       ", data.Digital.Default, named_type::ctrlStateDigital,
                   indent);
        return;
    case SAHPI_CTRL_TYPE_DISCRETE:
        zuSaHpiPrintf(out, "%sDefault State       %u (0x%.8x)\n", indent, data.Discrete.Default,
                      data.Discrete.Default);
        return;
    case SAHPI_CTRL_TYPE_ANALOG:
        printAnalog(out, data.Analog, indent);
        return;
    case SAHPI_CTRL_TYPE_STREAM:
        printStream(out, data.Stream.Default, indent);
        return;
    case SAHPI_CTRL_TYPE_TEXT:
        printText(out, data.Text, indent);
        return;
    case SAHPI_CTRL_TYPE_OEM:
        printOem(out, data.Oem, indent);
        return;
    default:
        zuSaHpiPrintf(out, "%sUndefined Control Type\n", indent);
        return;
    }
}

} // namespace

int printControlRecord(zuSaHpiHandleT out, const SaHpiCtrlRecT &record, const char *indent) {
    zuSaHpiPrintf(out, "\n");
    printValue(out, "Control Output Type ", record.OutputType, named_type::ctrlOutputType, indent);
    printValue(out, "Control Type        ", record.Type, named_type::ctrlType, indent);
    zuSaHpiPrintf(out, "%sDefault Mode%s", indent,
                  record.DefaultMode.ReadOnly != SAHPI_FALSE ? " (READ ONLY) " : "        ");
    printValue(out, "", record.DefaultMode.Mode, named_type::ctrlMode, "");
    if (record.WriteOnly != SAHPI_FALSE) {
        zuSaHpiPrintf(out, "%sWrite-Only Control\n", indent);
    }
    printDefaults(out, record, indent);
    // The one line of a record that has no indent.
    return zuSaHpiPrintf(out, "Oem Value: %u\n", record.Oem);
}

} // namespace zusahpi::display
