// A Linked log is that of one of the moments, in all that the store shows and in the bytes of its
// file. Others start, and each sector of their file is that of one of the moments.

#include "tests/blocks/image_judge.h"

#include <algorithm>
#include <cstdio>

#include <unistd.h>

#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/test_mainlib.h"

namespace block_test {
namespace {

using store_model::Kind;
using store_model::Model;
using store_model::Pair;

constexpr std::size_t diskSector = 512;
constexpr char noInfoRecord[] = "Unable to read Event Log Info from existing log file.\n";

using Possible = std::span<const Moment>;

// Starts the store on the file as it does after a crash, and compares.
std::string unlike(const std::string &path, const Model &model) {
    Pair pair{path, model};
    test_mainlib::state().timeOfDay = model.now;
    std::string difference = store_model::step(pair, {Kind::kill, 0});
    return difference + store_model::compare(pair);
}

std::string linkedVerdict(const std::string &path, Possible possible) {
    const std::string bytes = test_support::readFile(path);
    std::string differences;
    for (const Moment &moment : possible) {
        test_support::writeFile(path, bytes);
        const std::string difference = unlike(path, moment.model);
        if (difference.empty()) {
            return "held";
        }
        differences += "not one of the moments:\n" + difference;
    }
    return differences;
}

bool hasSector(const std::string &file, std::size_t at, std::string_view sector) {
    for (std::size_t i = 0; i < sector.size(); ++i) {
        const char expected = at + i < file.size() ? file[at + i] : '\0';
        if (sector[i] != expected) {
            return false;
        }
    }
    return true;
}

// Empty when nothing was lost that a sync had brought to the disk, and nothing stands there that
// the store never wrote.
std::string strangeSectors(const std::string &bytes, Possible possible) {
    const auto [shortest, longest] =
        std::minmax_element(possible.begin(), possible.end(), [](const Moment &a, const Moment &b) {
            return a.file.size() < b.file.size();
        });
    if (bytes.size() < shortest->file.size() || bytes.size() > longest->file.size()) {
        return "the file has " + std::to_string(bytes.size()) + " bytes\n";
    }
    for (std::size_t at = 0; at < bytes.size(); at += diskSector) {
        const std::string_view sector = std::string_view(bytes).substr(at, diskSector);
        if (std::none_of(possible.begin(), possible.end(), [&](const Moment &moment) {
                return hasSector(moment.file, at, sector);
            })) {
            return "the sector at " + std::to_string(at) + " is none that it may be\n";
        }
    }
    return {};
}

std::string unsyncedVerdict(const std::string &path, Possible possible) {
    const std::string strange = strangeSectors(test_support::readFile(path), possible);
    if (!strange.empty()) {
        return strange;
    }
    (void)unlike(path, possible.front().model); // it starts, or this is the process's end
    for (const Moment &moment : possible) {
        Pair pair{path, moment.model};
        (void)store_model::apply(pair.model, {Kind::kill, 0});
        test_mainlib::state().timeOfDay = pair.model.now;
        if (store_model::compareUnseen(pair).empty()) {
            return "held";
        }
    }
    return "mixed";
}

// While the file is being made: it is made now, or it is an empty log.
std::string creationVerdict(const std::string &path, const store_model::Settings &settings) {
    unlink((path + ".lck").c_str());
    std::string printed; // that the file was one of zeros, and is made anew
    const Pair pair = store_model::startPair(path, settings, printed);
    const std::string difference = store_model::compare(pair);
    return difference.empty() ? "held" : difference;
}

std::string verdictOn(const std::string &path, const store_model::Settings &settings,
                      Possible possible) {
    if (possible.empty()) {
        return creationVerdict(path, settings);
    }
    return settings.type == store_model::Type::linked ? linkedVerdict(path, possible)
                                                      : unsyncedVerdict(path, possible);
}

} // namespace

Judgement judgeImage(const std::string &path, const store_model::Settings &settings,
                     Possible possible) {
    const std::string sign = "\nverdict: ";
    const test_support::ChildResult child = test_support::runInChild([&] {
        std::string verdict = "the test itself failed";
        try {
            verdict = verdictOn(path, settings, possible);
        } catch (const std::exception &problem) {
            verdict = problem.what();
        }
        std::printf("%s%s", sign.c_str(), verdict.c_str());
    });
    const std::size_t place = child.diagnostics.rfind(sign);
    if (child.exitStatus != 0 || place == std::string::npos) {
        const bool incomplete = possible.empty() && child.diagnostics == noInfoRecord;
        return {incomplete ? Verdict::refused : Verdict::failed,
                "the start ended with status " + std::to_string(child.exitStatus) + ": " +
                    child.diagnostics};
    }
    const std::string verdict = child.diagnostics.substr(place + sign.size());
    if (verdict == "held") {
        return {Verdict::held, ""};
    }
    return {verdict == "mixed" ? Verdict::mixed : Verdict::failed, verdict};
}

} // namespace block_test
