// Goal: after each step of random sequences, thousands of operations long, on logs of every kind
// and many sizes, the store answers, shows and holds in its file exactly what the model says.
//
// A failure is repeated by its seed: it is printed, and ZUSAHPI_TEST_SEED sets it. Where there is
// RapidCheck it makes up the sequences. One that fails is cut down to the operations that matter.
// ZUSAHPI_MODEL_ROWS sets how many sequences are tried.

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#if ZUSAHPI_HAVE_RAPIDCHECK
#include <rapidcheck.h>
#endif

#include "tests/model/store_check.h"
#include "tests/support/files.h"

using namespace store_model;

namespace {

using Row = std::vector<std::uint32_t>;

constexpr std::uint32_t kindsOfLog = 9;
constexpr std::uint32_t largestSize = 40;
constexpr std::size_t longest = 5000;

#if defined(__SANITIZE_ADDRESS__)
constexpr int usualRows = 12;
#else
constexpr int usualRows = 150;
#endif

int numberOfRows() {
    const char *wanted = std::getenv("ZUSAHPI_MODEL_ROWS");
    return wanted == nullptr ? usualRows : std::atoi(wanted);
}

std::uint64_t chooseSeed() {
    const char *wanted = std::getenv("ZUSAHPI_TEST_SEED");
    const std::uint64_t seed =
        wanted == nullptr ? std::random_device{}() : std::strtoull(wanted, nullptr, 10);
    std::printf("seed: %" PRIu64 " (ZUSAHPI_TEST_SEED=%" PRIu64 " repeats it)\n", seed, seed);
    return seed;
}

Settings settingsOf(std::uint32_t choice) {
    Settings settings;
    settings.type = static_cast<Type>(choice % 3);
    settings.whenFull = static_cast<WhenFull>(choice / 3 % 3);
    settings.size = choice / kindsOfLog % largestSize + 1;
    return settings;
}

// The first number says what log it is, and whether the looks leave traces in its caches.
std::string differenceIn(const std::string &path, const Row &row) {
    if (row.empty()) {
        return {};
    }
    return runSequence(path, settingsOf(row[0] / 2), std::span(row).subspan(1), row[0] % 2 == 0);
}

Row randomRow(std::mt19937_64 &random, std::size_t length) {
    Row row(length);
    for (std::uint32_t &code : row) {
        code = static_cast<std::uint32_t>(random() % codes);
    }
    return row;
}

struct Figures {
    int rows = 0;
    std::size_t operations = 0;

    void add(const Row &row) {
        ++rows;
        operations += row.size();
    }
};

// Leaves out whatever can be left out with a difference still there, as long as a test has time for
// that, and returns the difference.
std::string differenceOfCutDown(Row row) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    for (std::size_t length = row.size() / 2; length > 0; length /= 2) {
        for (std::size_t from = 1; from + length <= row.size();) {
            if (std::chrono::steady_clock::now() > end) {
                return differenceIn("/memory/log", row);
            }
            Row shorter = row;
            const auto first = shorter.begin() + static_cast<std::ptrdiff_t>(from);
            shorter.erase(first, first + static_cast<std::ptrdiff_t>(length));
            if (differenceIn("/memory/log", shorter).empty()) {
                from += length;
            } else {
                row = shorter;
            }
        }
    }
    return differenceIn("/memory/log", row);
}

// Makes rows up until one shows a difference; returns that, or nothing.
#if ZUSAHPI_HAVE_RAPIDCHECK
std::string tryRows(int rows, std::uint64_t seed, Figures &figures) {
    // Its own way of cutting down takes time with the square of the length.
    const std::string parameters =
        "noshrink=1 seed=" + std::to_string(seed) + " max_success=" + std::to_string(rows);
    setenv("RC_PARAMS", parameters.c_str(), 1);
    const auto code = rc::gen::resize(100, rc::gen::inRange<std::uint32_t>(0, codes));
    const auto row = rc::gen::resize(static_cast<int>(longest), rc::gen::container<Row>(code));
    std::string difference;
    const bool holds = rc::check("store and model agree", [&] {
        const Row codesOfRow = *row;
        figures.add(codesOfRow);
        if (!differenceIn("/memory/log", codesOfRow).empty()) {
            difference = differenceOfCutDown(codesOfRow);
            RC_FAIL("see below");
        }
    });
    EXPECT_TRUE(holds);
    return difference;
}
#else
std::string tryRows(int rows, std::uint64_t seed, Figures &figures) {
    std::mt19937_64 random(seed);
    for (int i = 0; i < rows; ++i) {
        const Row row = randomRow(random, static_cast<std::size_t>(random() % longest + 1));
        figures.add(row);
        if (!differenceIn("/memory/log", row).empty()) {
            return differenceOfCutDown(row);
        }
    }
    return {};
}
#endif

TEST(RandomSequences, AgreeWithTheModel) {
    keepDiagnosticsOffTheTerminal();
    Figures figures;
    EXPECT_EQ(tryRows(numberOfRows(), chooseSeed(), figures), "");
    EXPECT_GE(figures.rows, numberOfRows());
    std::printf("figure: random sequences: %d\n", figures.rows);
    std::printf("figure: operations in random sequences: %zu\n", figures.operations);
}

// The disk in memory behaves as a real one: the same comparison on files of the system.
TEST(RandomSequences, AgreeWithTheModelOnARealDisk) {
    keepDiagnosticsOffTheTerminal();
    const test_support::ScratchFolder folder;
    std::mt19937_64 random(chooseSeed());
    for (std::uint32_t kind = 0; kind < kindsOfLog; ++kind) {
        Row row = randomRow(random, 60);
        row[0] = 2 * (kind + kindsOfLog * 5);
        EXPECT_EQ(differenceIn(folder.file("log" + std::to_string(kind)), row), "");
    }
}

} // namespace
