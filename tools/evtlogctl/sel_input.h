// Takes records out of a file's bytes, in the order of the file.
//
//   raw   records one after another, nothing between them
//   text  a record in every line from which sixteen byte values can be taken in a row, in one of
//           SEL Entry: 0200dfa6...                     digits without a gap, or in groups of one
//           01 00 02 2a ...   0x01, 0x00, ...   01h    width with blanks or commas between them
//           RID:[01][00] RT:[02] TS:[2a][00] ...       byte values in brackets, whatever is between
//         Other lines are passed over, as are lines that begin with '#'; but a line with four to
//         fifteen bytes in a row is a broken record, and so is a last line that just breaks off.
//
// Nothing is ever invented: what is no whole record becomes a problem, not a record.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/evtlogctl/sel_record.h"

namespace zusahpi::sel {

enum class Form { automatic, raw, text };

// A place in the data that is no record.
struct Problem {
    std::size_t offset = 0; // of its first byte
    std::size_t line = 0;   // from 1; 0 in raw data
    std::string what;
};

struct Input {
    Form form = Form::raw; // raw or text
    std::vector<Record> records;
    std::vector<Problem> problems;
};

[[nodiscard]] Input readRecords(std::string_view data, Form form);

// The sixteen bytes that a line holds, if it does.
[[nodiscard]] std::optional<Record> recordInLine(std::string_view line);

// How many OEM records with a time have a manufacturer id that is possible in one order only.
struct OrderVotes {
    std::size_t wire = 0;
    std::size_t reversed = 0;
};

[[nodiscard]] OrderVotes orderVotes(const std::vector<Record> &records);

} // namespace zusahpi::sel
