// The configuration file: its grammar, and the tree that it becomes.
//
// Invariants:
//   1. A known keyword stands where it belongs and has a value that the library may see; anything
//      else is an error.
//   2. A keyword that is known nowhere, and every keyword in its braces, is delivered with code 0
//      and its value as text: the library warns about it, or passes over a section of another user.
//   3. The grammar has no recursion: braces are counted, so depth costs no stack.
#include "mainlib/config_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include <tao/pegtl.hpp>

#include "mainlib/config_keywords.h"
#include "zuSaHpi_default_mainlib.h"

namespace zusahpi::mainlib {
namespace {

namespace pegtl = tao::pegtl;

// ---- Grammar ----------------------------------------------------------------------------------

namespace grammar {

using namespace pegtl;

struct comment : seq<one<'#'>, until<eolf>> {};
struct ignored : star<sor<one<' ', '\t', '\r', '\n'>, comment>> {};
struct gap : star<one<' ', '\t'>> {}; // within a line

struct name : seq<alpha, star<sor<alnum, one<'_'>>>> {};

struct quotedRun : plus<not_at<one<'"', '\\', '\x7F'>>, not_range<'\0', '\x1F'>> {};
struct escapable : one<'"', '\\'> {};
struct escape : if_must<one<'\\'>, escapable> {};
struct quoteEnd : one<'"'> {};
struct quoted : if_must<one<'"'>, star<sor<quotedRun, escape>>, quoteEnd> {};
struct bare : plus<not_at<one<'{', '}', '#', '"', '=', '\x7F'>>, not_range<'\0', ' '>> {};
struct value : sor<quoted, bare> {};
struct valueEnd : at<sor<eof, one<' ', '\t', '\r', '\n', '{', '}', '#'>>> {};

struct equals : one<'='> {};
struct open : one<'{'> {};
struct close : one<'}'> {};
struct setting : if_must<name, gap, equals, gap, value, valueEnd, ignored, opt<open>> {};
struct stray : any {};
struct file : seq<ignored, star<sor<setting, close, stray>, ignored>> {};

} // namespace grammar

struct Expectations {
    template <typename Rule>
    static constexpr const char *message = nullptr;
};
template <>
constexpr const char *Expectations::message<grammar::equals> = "'='";
template <>
constexpr const char *Expectations::message<grammar::value> = "a value";
template <>
constexpr const char *Expectations::message<grammar::quoteEnd> = "'\"' on this line";
template <>
constexpr const char *Expectations::message<grammar::escapable> = "'\"' or '\\' after '\\'";
template <>
constexpr const char *Expectations::message<grammar::valueEnd> = "a blank after the value";

template <typename Rule>
using Control = pegtl::must_if<Expectations, pegtl::normal, false>::control<Rule>;

// ---- Tree -------------------------------------------------------------------------------------

struct Mistake {
    pegtl::position position;
    std::string expected;
    std::string found; // empty: what stands at the position
};

struct Level {
    ConfigNode *superior = nullptr; // null at the top
    ConfigNode *last = nullptr;     // subordinate read so far
    std::size_t braceLine = 0;
};

struct Builder {
    Configuration result;
    std::vector<Level> levels = std::vector<Level>(1); // innermost last
    std::string valueText;
};

bool inUnknownSection(const Level &level) {
    return level.superior != nullptr && level.superior->code == 0;
}

std::string placeName(const ConfigNode *superior) {
    return superior == nullptr ? "at the top level" : std::string("under ") + superior->keyword;
}

std::string placeName(const Keyword &keyword) {
    const char *const superior = zuSaHpiConfigKeyword(keyword.superior);
    return superior == nullptr ? "at the top level" : std::string("under ") + superior;
}

// The keyword's row; null for one that is unknown here and everywhere.
const Keyword *resolve(const Level &level, std::string_view name, const pegtl::position &where) {
    const Keyword *const keyword = inUnknownSection(level) ? nullptr : findKeyword(name);
    if (keyword == nullptr) {
        return nullptr;
    }
    const std::uint32_t superior = level.superior == nullptr ? 0 : level.superior->code;
    if (keyword->superior != superior) {
        const std::string text(keyword->text);
        throw Mistake{where, text + " " + placeName(*keyword),
                      text + " " + placeName(level.superior)};
    }
    return keyword;
}

void addNode(Builder &builder, std::string_view name, const pegtl::position &where) {
    std::deque<ConfigNode> &nodes = builder.result.nodes;
    Level &level = builder.levels.back();
    const Keyword *const keyword = resolve(level, name, where);
    if (name.size() >= ZUSAHPI_CONF_TEXT_SIZE) {
        throw Mistake{where,
                      "a keyword of at most " + std::to_string(ZUSAHPI_CONF_TEXT_SIZE - 1) +
                          " characters",
                      {}};
    }
    if (nodes.size() == maxKeywords) {
        throw Mistake{where, "at most " + std::to_string(maxKeywords) + " keywords", {}};
    }
    ConfigNode &node = nodes.emplace_back();
    name.copy(node.keyword, name.size());
    node.code = keyword == nullptr ? 0 : keyword->code;
    node.line = static_cast<std::uint32_t>(where.line);
    node.parent = level.superior;
    if (level.last != nullptr) {
        level.last->nextSibling = &node;
    } else if (level.superior != nullptr) {
        level.superior->firstChild = &node;
    }
    level.last = &node;
}

void setText(ConfigNode &node, std::string_view text, const pegtl::position &where) {
    if (text.size() > sizeof node.strValue) {
        throw Mistake{
            where, "a text of at most " + std::to_string(sizeof node.strValue) + " characters", {}};
    }
    text.copy(node.strValue, text.size());
    node.intValue = static_cast<std::uint32_t>(text.size());
}

void setValue(Builder &builder, const pegtl::position &where) {
    ConfigNode &node = builder.result.nodes.back();
    const Keyword *const keyword = findKeyword(node.code);
    if (keyword == nullptr || keyword->kind == ValueKind::text) {
        setText(node, builder.valueText, where);
        return;
    }
    const std::optional<std::uint32_t> value = valueOf(*keyword, builder.valueText);
    if (!value) {
        throw Mistake{where, expectation(*keyword), {}};
    }
    node.intValue = *value;
}

const char *nextKeyword(const Builder &builder) {
    return builder.levels.size() == 1 ? "a keyword" : "a keyword or '}'";
}

void openBrace(Builder &builder, const pegtl::position &where) {
    ConfigNode &node = builder.result.nodes.back();
    const Keyword *const keyword = findKeyword(node.code);
    if (keyword != nullptr && !hasSubordinates(*keyword)) {
        throw Mistake{where, nextKeyword(builder), {}};
    }
    if (builder.levels.size() > maxDepth) {
        throw Mistake{where, "at most " + std::to_string(maxDepth) + " levels of braces", {}};
    }
    builder.levels.push_back({.superior = &node, .braceLine = where.line});
}

void closeBrace(Builder &builder, const pegtl::position &where) {
    if (builder.levels.size() == 1) {
        throw Mistake{where, nextKeyword(builder), {}};
    }
    builder.levels.pop_back();
}

// ---- Actions ----------------------------------------------------------------------------------

template <typename Rule>
struct Action {};

template <>
struct Action<grammar::name> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        addNode(builder, in.string_view(), in.position());
        builder.valueText.clear();
    }
};

template <>
struct Action<grammar::quotedRun> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        builder.valueText += in.string_view();
    }
};

template <>
struct Action<grammar::escapable> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        builder.valueText += in.string_view();
    }
};

template <>
struct Action<grammar::bare> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        builder.valueText = in.string_view();
    }
};

template <>
struct Action<grammar::value> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        setValue(builder, in.position());
    }
};

template <>
struct Action<grammar::open> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        openBrace(builder, in.position());
    }
};

template <>
struct Action<grammar::close> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        closeBrace(builder, in.position());
    }
};

template <>
struct Action<grammar::stray> {
    template <typename Input>
    static void apply(const Input &in, Builder &builder) {
        throw Mistake{in.position(), nextKeyword(builder), {}};
    }
};

// ---- Messages ---------------------------------------------------------------------------------

// Escaped and cut: the text comes from outside and ends up on a terminal.
std::string shown(std::string_view text) {
    constexpr std::size_t limit = 40;
    std::string result;
    for (const char character : text.substr(0, limit)) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte < 0x7F) {
            result += character;
        } else {
            std::array<char, 5> escape{};
            (void)std::snprintf(escape.data(), escape.size(), "\\x%02X", unsigned{byte});
            result += escape.data();
        }
    }
    return text.size() > limit ? result + "..." : result;
}

// Names what stands at the beginning of `rest`.
std::string describe(std::string_view rest) {
    constexpr std::string_view lineEnds = "\r\n";
    if (rest.empty()) {
        return "end of file";
    }
    const char first = rest.front();
    if (lineEnds.find(first) != std::string_view::npos) {
        return "end of line";
    }
    if (first == ' ' || first == '\t') {
        return "a blank";
    }
    if (first == '#') {
        return "a comment";
    }
    if (first == '"') {
        const std::string_view line = rest.substr(0, rest.find_first_of(lineEnds));
        const std::size_t end = line.find('"', 1);
        return shown(end == std::string_view::npos ? line : line.substr(0, end + 1));
    }
    const std::size_t length = rest.find_first_of(" \t\r\n{}#\"=");
    return length == 0 ? std::string{'\'', first, '\''} : shown(rest.substr(0, length));
}

std::string message(std::string_view name, std::string_view text, const pegtl::position &where,
                    std::string_view expected, std::string_view found) {
    std::string result(name);
    result += ":" + std::to_string(where.line) + ":" + std::to_string(where.column);
    result += ": expected ";
    result += expected;
    result += ", found ";
    result += found.empty() ? describe(text.substr(where.byte)) : std::string(found);
    return result;
}

// Reads as much as a configuration may hold and a byte more. Returns errno, 0 on success.
int readWhole(const char *path, std::string &text) {
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(path, "rbe"), std::fclose);
    if (file == nullptr) {
        return errno;
    }
    std::array<char, 65536> buffer{};
    while (text.size() <= maxFileSize && std::feof(file.get()) == 0) {
        const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get());
        if (std::ferror(file.get()) != 0) {
            return errno;
        }
        text.append(buffer.data(), count);
    }
    return 0;
}

Configuration failed(std::string error) {
    Configuration configuration;
    configuration.error = std::move(error);
    return configuration;
}

} // namespace

Configuration readConfiguration(std::string_view name, std::string_view text) {
    if (text.size() > maxFileSize) {
        return failed(std::string(name) + ": cannot be read: larger than " +
                      std::to_string(maxFileSize) + " bytes");
    }
    pegtl::memory_input input(text.data(), text.data() + text.size(), std::string(name));
    Builder builder;
    try {
        (void)pegtl::parse<grammar::file, Action, Control>(input, builder);
        if (builder.levels.size() > 1) {
            const std::size_t line = builder.levels.back().braceLine;
            throw Mistake{input.position(), "'}' for the '{' in line " + std::to_string(line), {}};
        }
    } catch (const Mistake &mistake) {
        return failed(message(name, text, mistake.position, mistake.expected, mistake.found));
    } catch (const pegtl::parse_error &error) {
        return failed(message(name, text, error.positions().front(), error.message(), {}));
    }
    return std::move(builder.result);
}

} // namespace zusahpi::mainlib

// ---- Border -------------------------------------------------------------------------------------

namespace {

using zusahpi::mainlib::Configuration;

// The storage of a record is a Configuration; null when there was no memory for one.
zuSaHpiConfigT handedOver(Configuration &&configuration) {
    auto owner = std::make_unique<Configuration>(std::move(configuration));
    zuSaHpiConfigT result{};
    if (!owner->error.empty()) {
        result.error = owner->error.c_str();
    } else if (!owner->nodes.empty()) {
        result.nodes = &owner->nodes.front();
    }
    result.storage = owner.release();
    return result;
}

constexpr zuSaHpiConfigT outOfMemory{nullptr, "out of memory", nullptr};

} // namespace

zuSaHpiConfigT zuSaHpiConfigFileRead(const char *path) {
    using namespace zusahpi::mainlib;
    try {
        std::string text;
        const int error = readWhole(path, text);
        if (error != 0) {
            return handedOver(
                failed(std::string(path) + ": cannot be read: " + std::strerror(error)));
        }
        return handedOver(readConfiguration(path, text));
    } catch (const std::bad_alloc &) {
        return outOfMemory;
    }
}

zuSaHpiConfigT zuSaHpiConfigTextRead(const char *name, const char *text, size_t length) {
    using namespace zusahpi::mainlib;
    try {
        return handedOver(readConfiguration(name, {text, length}));
    } catch (const std::bad_alloc &) {
        return outOfMemory;
    }
}

void zuSaHpiConfigRelease(zuSaHpiConfigT *config) {
    delete static_cast<Configuration *>(config->storage);
    *config = {};
}
