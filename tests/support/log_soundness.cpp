// The rules of the log file's format, one after the other, the slow and obvious way.

#include "tests/support/log_soundness.h"

#include <cstdint>
#include <cstring>
#include <set>

namespace test_support {
namespace {

constexpr std::uint32_t none = 0xFFFFFFFF;
constexpr std::uint32_t simple = 0;
constexpr std::uint32_t circular = 1;
constexpr std::uint32_t linked = 2;

constexpr std::uint64_t entriesStart = 6064;
constexpr std::uint64_t recordLength = 1496;

struct Judged {
    std::string_view bytes;
    std::uint32_t entries = 0;
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    std::uint32_t oldest = 0;
    std::uint32_t newest = 0;
    std::uint32_t freeHead = 0;
    std::uint32_t maxUsed = 0;
    std::vector<std::string> findings;
};

struct Links {
    std::uint32_t deleted;
    std::uint32_t prev;
    std::uint32_t next;
    std::uint32_t id;
};

std::uint32_t u32(std::string_view bytes, std::uint64_t offset) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

std::string text(std::uint32_t number) {
    return number == none ? "none" : std::to_string(number);
}

void find(Judged &log, const std::string &sentence) {
    log.findings.push_back(sentence);
}

bool isNumber(const Judged &log, std::uint32_t number) {
    return number >= 1 && number <= log.maxUsed;
}

// The caller knows that the record is in the file.
Links linksOf(const Judged &log, std::uint32_t number) {
    const std::uint64_t place = entriesStart + (std::uint64_t{number} - 1) * recordLength;
    return {u32(log.bytes, place), u32(log.bytes, place + 4), u32(log.bytes, place + 8),
            u32(log.bytes, place + 16)};
}

void judgeFlag(Judged &log, const char *name, std::size_t offset) {
    const unsigned value = static_cast<unsigned char>(log.bytes[offset]);
    if (value > 1) {
        find(log, std::string(name) + " is " + std::to_string(value) + ", neither 0 nor 1");
    }
}

void judgeInfoFields(Judged &log) {
    judgeFlag(log, "Enabled", 32);
    judgeFlag(log, "OverflowFlag", 33);
    judgeFlag(log, "OverflowResetable", 34);
    if (const std::uint32_t action = u32(log.bytes, 36); action > 1) {
        find(log, "OverflowAction is " + std::to_string(action) + ", neither 0 nor 1");
    }
    if (log.type > linked) {
        find(log, "type is " + std::to_string(log.type) + ", none of 0, 1, 2");
    }
    if (const std::uint32_t action = u32(log.bytes, 44); action > 2) {
        find(log, "overflowAction is " + std::to_string(action) + ", none of 0, 1, 2");
    }
    if (const std::uint32_t updating = u32(log.bytes, 72); updating != 0) {
        find(log, "updating is " + std::to_string(updating) + ": a transaction waits");
    }
    if (log.entries > log.size) {
        find(log, "Entries is " + std::to_string(log.entries) + ", more than Size " +
                      std::to_string(log.size));
    }
    if (log.maxUsed > log.size) {
        find(log, "maxUsed is " + std::to_string(log.maxUsed) + ", more than Size " +
                      std::to_string(log.size));
    }
    if (log.type != linked && log.freeHead != none) {
        find(log, "freeHead is " + text(log.freeHead) + " though the log is not Linked");
    }
}

// True when the ends can be followed.
bool judgeEnds(Judged &log) {
    if (log.entries == 0) {
        if (log.oldest != none || log.newest != none) {
            find(log, "Entries is 0 but oldest is " + text(log.oldest) + " and newest " +
                          text(log.newest));
        }
        return false;
    }
    bool good = true;
    if (!isNumber(log, log.oldest)) {
        find(log, "oldest is " + text(log.oldest) + ", not an entry number up to maxUsed");
        good = false;
    }
    if (!isNumber(log, log.newest)) {
        find(log, "newest is " + text(log.newest) + ", not an entry number up to maxUsed");
        good = false;
    }
    return good;
}

void judgeIds(Judged &log) {
    for (std::uint32_t number = 1; number <= log.maxUsed; ++number) {
        if (const Links links = linksOf(log, number); links.id != number) {
            find(log, "entry " + std::to_string(number) + " bears the id " + text(links.id));
        }
    }
}

// Records of logs that are not Linked have neither links nor a deleted mark.
void judgeUnlinkedRecords(Judged &log) {
    for (std::uint32_t number = 1; number <= log.maxUsed; ++number) {
        const Links links = linksOf(log, number);
        if (links.deleted != 0) {
            find(log, "entry " + std::to_string(number) + " is marked deleted (" +
                          std::to_string(links.deleted) + ") though the log is not Linked");
        }
        if (links.prev != none || links.next != none) {
            find(log, "entry " + std::to_string(number) + " has links though the log is not " +
                          "Linked");
        }
    }
}

void expectEntries(Judged &log, std::uint64_t reachable) {
    if (log.entries != reachable) {
        find(log, "Entries is " + std::to_string(log.entries) + " but " +
                      std::to_string(reachable) + " are reachable");
    }
}

void expectMaxUsed(Judged &log, std::uint32_t expected) {
    if (log.maxUsed != expected) {
        find(log, "maxUsed is " + std::to_string(log.maxUsed) + " instead of " +
                      std::to_string(expected));
    }
}

void judgeSimple(Judged &log, bool endsAreGood) {
    judgeUnlinkedRecords(log);
    if (log.entries == 0) {
        expectMaxUsed(log, 0);
        return;
    }
    if (!endsAreGood) {
        return;
    }
    if (log.oldest != 1) {
        find(log, "oldest is " + text(log.oldest) + " in a Simple log, which begins at 1");
    }
    expectMaxUsed(log, log.newest);
    expectEntries(log, log.newest);
}

void judgeCircular(Judged &log, bool endsAreGood) {
    judgeUnlinkedRecords(log);
    if (log.entries == 0) {
        expectMaxUsed(log, 0);
        return;
    }
    if (!endsAreGood) {
        return;
    }
    if (log.newest >= log.oldest) {
        expectMaxUsed(log, log.newest);
        expectEntries(log, std::uint64_t{log.newest} - log.oldest + 1);
    } else {
        expectMaxUsed(log, log.size); // the ring closes at Size and nowhere else
        expectEntries(log, std::uint64_t{log.maxUsed} - log.oldest + 1 + log.newest);
    }
}

// From oldest by next; the numbers that were met.
std::set<std::uint32_t> judgeChain(Judged &log) {
    std::set<std::uint32_t> met;
    std::uint32_t before = none;
    for (std::uint32_t number = log.oldest; number != none;) {
        if (!isNumber(log, number)) {
            find(log, "entry " + text(before) + " leads on to " + std::to_string(number) +
                          ", not an entry number up to maxUsed");
            return met;
        }
        if (!met.insert(number).second) {
            find(log, "the chain comes to entry " + std::to_string(number) + " again");
            return met;
        }
        const Links links = linksOf(log, number);
        if (links.deleted != 0) {
            find(log, "entry " + std::to_string(number) + " is in the chain but marked deleted (" +
                          std::to_string(links.deleted) + ")");
        }
        if (links.prev != before) {
            find(log, "entry " + std::to_string(number) + " has prev " + text(links.prev) +
                          " but comes after " + text(before));
        }
        before = number;
        number = links.next;
    }
    if (before != log.newest) {
        find(log, "the chain ends at entry " + text(before) + " but newest is " + text(log.newest));
    }
    return met;
}

std::set<std::uint32_t> judgeFreeList(Judged &log) {
    std::set<std::uint32_t> met;
    for (std::uint32_t number = log.freeHead; number != none;) {
        if (!isNumber(log, number)) {
            find(log, "the free list leads to " + std::to_string(number) +
                          ", not an entry number up to maxUsed");
            return met;
        }
        if (!met.insert(number).second) {
            find(log, "the free list comes to entry " + std::to_string(number) + " again");
            return met;
        }
        const Links links = linksOf(log, number);
        if (links.deleted != 1) {
            find(log, "entry " + std::to_string(number) + " is on the free list but its mark is " +
                          std::to_string(links.deleted));
        }
        number = links.next;
    }
    return met;
}

void judgeLinked(Judged &log, bool endsAreGood) {
    std::set<std::uint32_t> chain;
    if (endsAreGood) {
        chain = judgeChain(log);
        expectEntries(log, chain.size());
    } else if (log.entries != 0) {
        return; // nothing to follow, and the ends are reported
    }
    const std::set<std::uint32_t> free = judgeFreeList(log);
    for (std::uint32_t number = 1; number <= log.maxUsed; ++number) {
        const bool active = chain.count(number) != 0;
        const bool deleted = free.count(number) != 0;
        if (active && deleted) {
            find(log, "entry " + std::to_string(number) + " is in the chain and on the free list");
        }
        if (!active && !deleted) {
            find(log, "entry " + std::to_string(number) +
                          " is neither in the chain nor on the free list");
        }
    }
}

} // namespace

std::vector<std::string> unsoundness(std::string_view fileBytes) {
    Judged log;
    log.bytes = fileBytes;
    if (fileBytes.size() < entriesStart) {
        find(log, "the file has " + std::to_string(fileBytes.size()) +
                      " bytes, too few for info record and transaction log area");
        return log.findings;
    }
    log.entries = u32(fileBytes, 0);
    log.size = u32(fileBytes, 4);
    log.type = u32(fileBytes, 40);
    log.oldest = u32(fileBytes, 48);
    log.newest = u32(fileBytes, 52);
    log.freeHead = u32(fileBytes, 56);
    log.maxUsed = u32(fileBytes, 60);
    judgeInfoFields(log);
    if (fileBytes.size() < entriesStart + log.maxUsed * recordLength) {
        find(log, "the file has " + std::to_string(fileBytes.size()) + " bytes, too few for " +
                      std::to_string(log.maxUsed) + " entries");
        return log.findings;
    }
    const bool endsAreGood = judgeEnds(log);
    judgeIds(log);
    if (log.type == simple) {
        judgeSimple(log, endsAreGood);
    } else if (log.type == circular) {
        judgeCircular(log, endsAreGood);
    } else if (log.type == linked) {
        judgeLinked(log, endsAreGood);
    }
    return log.findings;
}

} // namespace test_support
