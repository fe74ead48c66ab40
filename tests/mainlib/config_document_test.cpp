// Goal: docs/configuration-file.md is true. Its examples are parsed, its error texts are the ones
// that come out, and its tables name every keyword with every word and number.
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "mainlib/config_file.h"
#include "mainlib/config_keywords.h"
#include "tests/support/files.h"

namespace {

const std::string document =
    test_support::readFile(std::string(ZUSAHPI_TEST_DATA) + "/../docs/configuration-file.md");

struct Block {
    std::string kind; // what stands after the backquotes
    std::string text;
};

std::vector<Block> blocks() {
    std::vector<Block> result;
    const std::string fence = "\n```";
    for (std::size_t begin = 0; (begin = document.find(fence, begin)) != std::string::npos;) {
        const std::size_t kind = begin + fence.size();
        const std::size_t text = document.find('\n', kind) + 1;
        const std::size_t end = document.find(fence, text - 1);
        result.push_back(
            {document.substr(kind, text - 1 - kind), document.substr(text, end + 1 - text)});
        begin = end + fence.size();
    }
    return result;
}

std::string rowOf(const std::string &keyword) {
    const std::size_t begin = document.find("\n| `" + keyword + "` |");
    return begin == std::string::npos
               ? ""
               : document.substr(begin + 1, document.find('\n', begin + 1) - begin);
}

} // namespace

TEST(ConfigDocument, ExamplesGiveWhatItSays) {
    const std::vector<Block> all = blocks();
    int errors = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].kind != "conf") {
            continue;
        }
        const bool wrong = i + 1 < all.size() && all[i + 1].kind == "text";
        const std::string error =
            zusahpi::mainlib::readConfiguration("evtlog.conf", all[i].text).error;
        EXPECT_EQ(error + "\n", wrong ? all[i + 1].text : "\n") << all[i].text;
        errors += wrong ? 1 : 0;
    }
    EXPECT_EQ(errors, 7);
    EXPECT_EQ(all.size(), 15U);
}

TEST(ConfigDocument, TablesHoldEveryKeywordAndWord) {
    for (std::uint32_t code = ZUSAHPI_CONF_EVENT_LOG; code <= ZUSAHPI_CONF_SYSLOG_SUPPRESS_RESOURCE;
         ++code) {
        const zusahpi::mainlib::Keyword &keyword = *zusahpi::mainlib::findKeyword(code);
        const std::string row = rowOf(keyword.text);
        EXPECT_NE(row, "") << keyword.text;
        for (const zusahpi::mainlib::Word &word : keyword.words) {
            const std::string cell =
                "`" + std::string(word.text) + "` (" + std::to_string(word.value) + ")";
            EXPECT_NE(row.find(cell), std::string::npos) << keyword.text << " " << cell;
        }
        if (keyword.kind == zusahpi::mainlib::ValueKind::number) {
            const std::string cell = "| " + std::to_string(keyword.lowest) + " to " +
                                     std::to_string(keyword.highest) + " |";
            EXPECT_NE(row.find(cell), std::string::npos) << keyword.text << " " << cell;
        }
    }
}
