// What of a text buffer may be shown as text. Bytes are shown as they are stored; BCD plus and
// ASCII6 are not decoded.
#pragma once

#include "hpi/SaHpi.h"

namespace zusahpi::display {

// The formats that zuSaHpiTextBufferDisplay takes.
namespace text_format {
enum Format : int { valueOnly = 0, full = 1, bareText = 2, typeTag = 3 };
}

// Room for a full text buffer and a NUL.
struct Text {
    char text[SAHPI_MAX_TEXT_BUFFER_LENGTH + 1];
};

// BCD plus, ASCII6 and text are printable; Unicode, binary and unknown types are shown as a dump.
[[nodiscard]] bool isPrintable(const SaHpiTextBufferT &buffer);

// The bytes in use, NUL-terminated. A NUL among them ends the text early.
[[nodiscard]] Text textOf(const SaHpiTextBufferT &buffer);

} // namespace zusahpi::display
