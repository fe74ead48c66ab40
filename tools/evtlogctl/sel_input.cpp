// Raw and text forms of a System Event Log file.
#include "tools/evtlogctl/sel_input.h"

#include <algorithm>

#include <fmt/format.h>

namespace zusahpi::sel {
namespace {

// Fewer bytes than this in a row are a date, a number, a word: no attempt at a record.
constexpr std::size_t fewestOfBroken = 4;

// The byte values that were found in a row; those after the sixteenth do not matter.
struct Row {
    Record record;
    std::size_t count = 0;
    std::size_t width = 0; // digits of each group of the row
};

void append(Row &row, std::uint8_t value) {
    if (row.count < recordSize) {
        row.record.bytes[row.count] = value;
    }
    ++row.count;
}

[[nodiscard]] int digitOf(char letter) {
    if (letter >= '0' && letter <= '9') {
        return letter - '0';
    }
    const int lower = letter | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

[[nodiscard]] bool isHex(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char letter) { return digitOf(letter) >= 0; });
}

[[nodiscard]] std::uint8_t byteOf(std::string_view twoDigits) {
    return static_cast<std::uint8_t>(digitOf(twoDigits[0]) * 16 + digitOf(twoDigits[1]));
}

[[nodiscard]] bool isBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\f' || letter == '\v';
}

[[nodiscard]] bool isSeparator(char letter) {
    return isBlank(letter) || letter == ',';
}

// "0x4A" and "4Ah" are the digits "4A".
[[nodiscard]] std::string_view withoutMarks(std::string_view group) {
    if (group.size() == 4 && group[0] == '0' && (group[1] == 'x' || group[1] == 'X')) {
        return group.substr(2);
    }
    if (group.size() == 3 && (group[2] == 'h' || group[2] == 'H')) {
        return group.substr(0, 2);
    }
    return group;
}

[[nodiscard]] const Row &longer(const Row &a, const Row &b) {
    return b.count > a.count ? b : a;
}

// All values that stand alone in brackets, as one row.
[[nodiscard]] Row rowInBrackets(std::string_view line) {
    Row row;
    for (std::size_t at = line.find('['); at != std::string_view::npos;
         at = line.find('[', at + 1)) {
        if (at + 3 < line.size() && line[at + 3] == ']' && isHex(line.substr(at + 1, 2))) {
            append(row, byteOf(line.substr(at + 1, 2)));
        }
    }
    return row;
}

// Adds a group of digits to the row, or begins a new row where the group is none or another width:
// the offset before a line of a dump is thus no part of the record.
void takeGroup(std::string_view group, Row &row) {
    const std::string_view digits = withoutMarks(group);
    if (!isHex(digits) || digits.size() > 2 * recordSize) {
        row = {};
        return;
    }
    if (digits.size() != row.width) {
        row = {.record = {}, .count = 0, .width = digits.size()};
    }
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        append(row, byteOf(digits.substr(i, 2)));
    }
    if (digits.size() % 2 != 0) {
        row.width = 0; // half a byte: the row ends here, and is never a whole record
        row.count = std::min(row.count, recordSize - 1);
    }
}

// The first row of sixteen values between blanks, else the longest.
[[nodiscard]] Row rowOfGroups(std::string_view line) {
    Row best;
    Row row;
    std::size_t at = 0;
    while (at < line.size() && best.count < recordSize) {
        if (isSeparator(line[at])) {
            ++at;
            continue;
        }
        const std::size_t begin = at;
        while (at < line.size() && !isSeparator(line[at])) {
            ++at;
        }
        takeGroup(line.substr(begin, at - begin), row);
        best = longer(best, row);
    }
    return best;
}

[[nodiscard]] Row bestRow(std::string_view line) {
    return longer(rowInBrackets(line), rowOfGroups(line));
}

[[nodiscard]] std::string_view trimmed(std::string_view line) {
    while (!line.empty() && isBlank(line.front())) {
        line.remove_prefix(1);
    }
    while (!line.empty() && isBlank(line.back())) {
        line.remove_suffix(1);
    }
    return line;
}

void readLine(std::string_view line, bool terminated, std::size_t offset, std::size_t number,
              Input &input) {
    const std::string_view text = trimmed(line);
    if (text.empty() || text.front() == '#') {
        return;
    }
    const Row row = bestRow(text);
    if (row.count >= recordSize) {
        input.records.push_back(row.record);
    } else if (row.count >= fewestOfBroken) {
        input.problems.push_back(
            {offset, number, fmt::format("a record of {} bytes instead of 16", row.count)});
    } else if (!terminated) {
        input.problems.push_back({offset, number, "the text breaks off without a record"});
    }
}

[[nodiscard]] Input readText(std::string_view data) {
    Input input{.form = Form::text, .records = {}, .problems = {}};
    std::size_t number = 0;
    for (std::size_t begin = 0; begin < data.size();) {
        const std::size_t newline = data.find('\n', begin);
        const bool terminated = newline != std::string_view::npos;
        const std::size_t end = terminated ? newline : data.size();
        readLine(data.substr(begin, end - begin), terminated, begin, ++number, input);
        begin = end + 1;
    }
    return input;
}

[[nodiscard]] Input readRaw(std::string_view data) {
    Input input;
    input.records.reserve(data.size() / recordSize);
    std::size_t at = 0;
    for (; at + recordSize <= data.size(); at += recordSize) {
        Record &record = input.records.emplace_back();
        std::copy_n(data.begin() + static_cast<std::ptrdiff_t>(at), recordSize,
                    record.bytes.begin());
    }
    if (at < data.size()) {
        input.problems.push_back(
            {at, 0, fmt::format("a record of {} bytes instead of 16", data.size() - at)});
    }
    return input;
}

// A raw record has control characters: its type is 02h in all but odd cases. Text has none but
// those that lay it out.
[[nodiscard]] bool looksLikeText(std::string_view data) {
    return std::none_of(data.begin(), data.end(), [](char letter) {
        const auto code = static_cast<unsigned char>(letter);
        return (code < 0x20 && !isBlank(letter) && letter != '\n') || code == 0x7F;
    });
}

} // namespace

std::optional<Record> recordInLine(std::string_view line) {
    const Row row = bestRow(line);
    return row.count >= recordSize ? std::optional(row.record) : std::nullopt;
}

Input readRecords(std::string_view data, Form form) {
    if (form == Form::automatic) {
        form = looksLikeText(data) ? Form::text : Form::raw;
    }
    return form == Form::text ? readText(data) : readRaw(data);
}

OrderVotes orderVotes(const std::vector<Record> &records) {
    OrderVotes votes;
    for (const Record &record : records) {
        if (kindOf(record) != Kind::timedOem) {
            continue;
        }
        const bool wire = manufacturerOf(record, OemOrder::wire) <= lastManufacturer;
        const bool reversed = manufacturerOf(record, OemOrder::reversed) <= lastManufacturer;
        votes.wire += static_cast<std::size_t>(wire && !reversed);
        votes.reversed += static_cast<std::size_t>(reversed && !wire);
    }
    return votes;
}

} // namespace zusahpi::sel
