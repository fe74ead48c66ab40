// Tables of counts. Each line is: entries, rate, first, last, a bar that is as long as the number
// of entries is great beside that of the busiest group, and the name, which is never cut.
#include "tools/evtlogctl/stat_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "tools/evtlogctl/failure.h"
#include "tools/evtlogctl/local_time.h"
#include "tools/evtlogctl/names.h"
#include "tools/evtlogctl/sel_severity.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t labelWidth = 12;
constexpr std::size_t countWidth = 7;
constexpr std::size_t rateWidth = 8;
constexpr std::size_t dayWidth = 10;    // 2024-02-20
constexpr std::size_t minuteWidth = 16; // 2024-02-20T17:45
constexpr std::size_t gaps = 10;        // five of them
constexpr std::size_t leastBar = 12;
constexpr std::size_t mostBar = 40;
constexpr double shortSpan = 2; // days; in a shorter one rates are by the hour
constexpr double hoursOfADay = 24;

struct Row {
    const CountedGroup *group;
    std::string name;
};

struct Table {
    std::string_view title;
    std::vector<Row> rows; // the busiest first
    std::size_t groupsLeftOut = 0;
    std::size_t entriesLeftOut = 0; // of those groups
    std::size_t entriesBeyond = 0;
};

// What all tables of a log have in common.
struct Style {
    const EventTimes &whole;
    bool hourly;
    std::size_t dateWidth;
    std::size_t barWidth;
};

// `nameOf` gives the name of a group.
template <typename NameOf>
[[nodiscard]] Table tableOf(std::string_view title, const Tally &tally, std::size_t rows,
                            NameOf nameOf) {
    Table table{.title = title,
                .rows = {},
                .groupsLeftOut = 0,
                .entriesLeftOut = 0,
                .entriesBeyond = tally.entriesBeyond};
    for (const CountedGroup *const group : busiestFirst(tally)) {
        if (table.rows.size() < rows) {
            table.rows.push_back({.group = group, .name = nameOf(*group)});
        } else {
            ++table.groupsLeftOut;
            table.entriesLeftOut += group->entries;
        }
    }
    return table;
}

[[nodiscard]] std::vector<Table> tablesOf(const LogCounts &counts, std::size_t rows) {
    std::vector<Table> tables;
    tables.push_back(tableOf("severity", counts.severities, rows, [](const CountedGroup &group) {
        return sel::severityName(static_cast<SaHpiSeverityT>(group.value));
    }));
    tables.push_back(tableOf("event type", counts.eventTypes, rows,
                             [](const CountedGroup &group) { return eventTypeName(group.value); }));
    tables.push_back(tableOf("source", counts.sources, rows,
                             [](const CountedGroup &group) { return group.source; }));
    tables.push_back(tableOf("sensor", counts.sensors, rows, [](const CountedGroup &group) {
        return fmt::format("{}: {}", group.source, group.sensor);
    }));
    return tables;
}

// Bars take what figures and names leave.
[[nodiscard]] Style styleFor(const std::vector<Table> &tables, const EventTimes &whole,
                             std::size_t width) {
    const bool hourly = daysOf(whole) < shortSpan;
    const std::size_t dateWidth = hourly ? minuteWidth : dayWidth;
    const std::size_t figures = countWidth + rateWidth + 2 * dateWidth + gaps;
    std::size_t used = figures;
    for (const Table &table : tables) {
        for (const Row &row : table.rows) {
            used = std::max(used, figures + row.name.size());
        }
    }
    return {.whole = whole,
            .hourly = hourly,
            .dateWidth = dateWidth,
            .barWidth = std::clamp(width - std::min(width, used), leastBar, mostBar)};
}

// Of `full` characters, at least one for anything that there is. In whole numbers, so that it is
// the same on every processor; both counts have 32 bits, so the product fits.
[[nodiscard]] std::size_t barLength(std::uint64_t part, std::uint64_t whole, std::size_t full) {
    if (part == 0 || whole == 0) {
        return 0;
    }
    const std::uint64_t length = std::min(part, whole) * full / whole;
    return std::max<std::size_t>(static_cast<std::size_t>(length), 1);
}

[[nodiscard]] std::string numberText(double number) {
    if (number >= 1e6) {
        return fmt::format("{:.1e}", number);
    }
    return number >= 10 ? fmt::format("{:.0f}", number) : fmt::format("{:.2g}", number);
}

[[nodiscard]] std::string rateText(const EventTimes &times, const Style &style) {
    const auto rate = perDay(times, style.whole);
    return rate && times.events > 0 ? numberText(style.hourly ? *rate / hoursOfADay : *rate) : "-";
}

// The day, and in a short log the time: a form that the options for times take.
[[nodiscard]] std::string momentText(const EventTimes &times, SaHpiTimeT time, const Style &style) {
    if (times.events == 0) {
        return "-";
    }
    return timeText(time).substr(0, style.dateWidth);
}

// A line of a table, or its heading.
struct Line {
    std::string_view count;
    std::string_view rate;
    std::string_view first;
    std::string_view last;
    std::string_view bar;
    std::string_view name;
};

void appendLine(std::string &text, const Line &line, const Style &style) {
    fmt::format_to(std::back_inserter(text), "{:>{}}  {:>{}}  {:<{}}  {:<{}}  {:<{}}  {}\n",
                   line.count, countWidth, line.rate, rateWidth, line.first, style.dateWidth,
                   line.last, style.dateWidth, line.bar, style.barWidth, line.name);
}

void appendRow(std::string &text, const Row &row, std::size_t busiest, const Style &style) {
    const CountedGroup &group = *row.group;
    const std::string count = fmt::format("{}", group.entries);
    const std::string rate = rateText(group.times, style);
    const std::string first = momentText(group.times, group.times.first, style);
    const std::string last = momentText(group.times, group.times.last, style);
    const std::string bar(barLength(group.entries, busiest, style.barWidth), '#');
    appendLine(
        text,
        {.count = count, .rate = rate, .first = first, .last = last, .bar = bar, .name = row.name},
        style);
}

void appendTable(std::string &text, const Table &table, const Style &style) {
    if (table.rows.empty() && table.groupsLeftOut == 0) {
        return;
    }
    text += '\n';
    appendLine(text,
               {.count = "entries",
                .rate = style.hourly ? "per hour" : "per day",
                .first = "first",
                .last = "last",
                .bar = "",
                .name = table.title},
               style);
    for (const Row &row : table.rows) {
        appendRow(text, row, table.rows.front().group->entries, style);
    }
    if (table.groupsLeftOut > 0) {
        fmt::format_to(std::back_inserter(text), "{:>{}}  in {} more; --all shows every one\n",
                       table.entriesLeftOut, countWidth, table.groupsLeftOut);
    }
    if (table.entriesBeyond > 0) {
        fmt::format_to(std::back_inserter(text),
                       "{:>{}}  in others: no more than {} are told apart\n", table.entriesBeyond,
                       countWidth, mostGroups);
    }
}

void appendLabel(std::string &text, std::string_view label, std::string_view value) {
    fmt::format_to(std::back_inserter(text), "{:<{}}{}\n", label, labelWidth, value);
}

[[nodiscard]] std::string fillText(const EventLogInfoRecord &info, std::size_t width) {
    constexpr double percent = 100;
    const double entries = info.sa.Entries;
    const double size = info.sa.Size;
    const std::size_t full = std::min(width / 2, mostBar);
    const std::string bar(barLength(info.sa.Entries, info.sa.Size, full), '#');
    return fmt::format("[{:<{}}] {:.3g} %, {} of {} entries", bar, full,
                       size > 0 ? percent * entries / size : percent, info.sa.Entries,
                       info.sa.Size);
}

[[nodiscard]] std::string spanText(const LogCounts &counts) {
    const EventTimes &times = counts.times;
    if (times.events == 0) {
        return "no entry has a time of day";
    }
    if (times.first == times.last) {
        return timeText(times.first);
    }
    const double days = daysOf(times);
    return fmt::format("{} to {}, {}", timeText(times.first), timeText(times.last),
                       days < shortSpan ? fmt::format("{:.1f} hours", days * hoursOfADay)
                                        : fmt::format("{:.0f} days", days));
}

void appendHead(std::string &text, const DescribedLog &log, const LogCounts &counts,
                std::size_t width) {
    appendLabel(text, "File", shown(log.path));
    appendLabel(text, "Filled", fillText(log.info, width));
    appendLabel(text, "When full", wordOf(ZUSAHPI_CONF_OVERFLOW, log.info.overflowAction));
    appendLabel(text, "Overflowed", log.info.sa.OverflowFlag != SAHPI_FALSE ? "yes" : "no");
    appendLabel(text, "Events", spanText(counts));
    if (counts.relative > 0) {
        appendLabel(text, "",
                    fmt::format("{} with a time since the start of the controller: in "
                                "no rate",
                                counts.relative));
    }
    if (counts.untimed > 0) {
        appendLabel(text, "", fmt::format("{} without a time: in no rate", counts.untimed));
    }
}

} // namespace

std::string statisticsText(const DescribedLog &log, const LogCounts &counts,
                           const TableShape &shape) {
    const std::vector<Table> tables = tablesOf(counts, shape.rows);
    const Style style = styleFor(tables, counts.times, shape.width);
    std::string text;
    appendHead(text, log, counts, shape.width);
    for (const Table &table : tables) {
        appendTable(text, table, style);
    }
    return text;
}

} // namespace zusahpi::evtlogctl
