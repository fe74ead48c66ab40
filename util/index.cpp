// The sorted index: a list of pages of 32 keys each.
//
// Invariants:
//   1. A page's base is a multiple of 32, and bases ascend strictly along the list.
//   2. The value under a key is in the page of the key's base, in the slot of its low five bits;
//      a null slot holds nothing.
//   3. The first page keeps its address: the caller's pointer stays valid.
//   4. A page stays until the index is freed, even when all its slots are empty.

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "util/diagnostics.h"
#include "zuSaHpi_util.h"

namespace zusahpi {
namespace {

constexpr std::uint32_t keysPerPage = 32;
constexpr std::uint32_t lastSlot = keysPerPage - 1;
constexpr std::uint32_t lastKey = 0xFFFFFFFF;

struct IndexPage {
    std::uint32_t base;
    IndexPage *next;
    std::array<void *, keysPerPage> slots;
};

[[nodiscard]] constexpr std::uint32_t baseOf(std::uint32_t key) {
    return key & ~lastSlot;
}

[[nodiscard]] constexpr std::uint32_t slotOf(std::uint32_t key) {
    return key & lastSlot;
}

[[nodiscard]] IndexPage *firstPageOf(void *index) {
    return static_cast<IndexPage *>(index);
}

// A page that holds nothing yet. Ends the process when there is no memory for it.
[[nodiscard]] IndexPage *newPage(const char *purpose) {
    auto *page = static_cast<IndexPage *>(std::malloc(sizeof(IndexPage)));
    if (page == nullptr) {
        zuSaHpiPrintf(diagnostics(), "malloc of %s index page: %s\n", purpose,
                      std::strerror(errno));
        std::exit(EXIT_FAILURE);
    }
    *page = {};
    return page;
}

void setFirstValue(IndexPage &page, std::uint32_t key, void *value) {
    page.base = baseOf(key);
    page.slots[slotOf(key)] = value;
}

// Moves what the first page holds to a page of its own behind it and leaves the first one empty
// (invariant 3).
void makeRoomAtFront(IndexPage &first) {
    IndexPage *moved = newPage("add-on");
    *moved = first;
    first = {};
    first.next = moved;
}

// The last page whose base is not above the key; null when that of the first page already is.
[[nodiscard]] IndexPage *lastPageNotAbove(IndexPage *first, std::uint32_t key) {
    if (first == nullptr || first->base > key) {
        return nullptr;
    }
    IndexPage *page = first;
    while (page->next != nullptr && page->next->base <= key) {
        page = page->next;
    }
    return page;
}

[[nodiscard]] IndexPage *pageOf(IndexPage *first, std::uint32_t key) {
    IndexPage *page = first;
    while (page != nullptr && page->base != baseOf(key)) {
        page = page->next;
    }
    return page;
}

[[nodiscard]] IndexPage *pageBefore(IndexPage *first, const IndexPage *page) {
    return page == first ? nullptr : lastPageNotAbove(first, page->base - 1);
}

// The value in the lowest occupied slot from `slot` upwards, or null.
[[nodiscard]] void *firstValueFrom(const IndexPage &page, std::uint32_t slot) {
    while (slot < lastSlot && page.slots[slot] == nullptr) {
        ++slot;
    }
    // cppcheck-suppress CastIntegerToAddressAtReturn ; the slots hold pointers
    return page.slots[slot];
}

// The value in the highest occupied slot from `slot` downwards, or null.
[[nodiscard]] void *lastValueFrom(const IndexPage &page, std::uint32_t slot) {
    while (slot > 0 && page.slots[slot] == nullptr) {
        --slot;
    }
    // cppcheck-suppress CastIntegerToAddressAtReturn ; the slots hold pointers
    return page.slots[slot];
}

} // namespace
} // namespace zusahpi

void *zuSaHpiIndexAdd(void *value, uint32_t key, void *index) {
    using namespace zusahpi;
    IndexPage *first = firstPageOf(index);
    if (first == nullptr) {
        first = newPage("initial");
        setFirstValue(*first, key, value);
        return first;
    }
    IndexPage *page = lastPageNotAbove(first, key);
    if (page == nullptr) {
        makeRoomAtFront(*first);
        setFirstValue(*first, key, value);
        return first;
    }
    if (page->base != baseOf(key)) {
        IndexPage *added = newPage("new");
        added->next = page->next;
        page->next = added;
        page = added;
    }
    setFirstValue(*page, key, value);
    return first;
}

void zuSaHpiIndexDel(uint32_t key, void *index) {
    using namespace zusahpi;
    if (IndexPage *page = pageOf(firstPageOf(index), key)) {
        page->slots[slotOf(key)] = nullptr;
    }
}

void *zuSaHpiIndexGet(uint32_t key, void *index) {
    using namespace zusahpi;
    const IndexPage *page = pageOf(firstPageOf(index), key);
    return page == nullptr ? nullptr : page->slots[slotOf(key)];
}

void *zuSaHpiIndexGetNext(uint32_t key, void *index) {
    using namespace zusahpi;
    if (key == lastKey) { // what a walk asks for after its last step
        return nullptr;
    }
    for (const IndexPage *page = firstPageOf(index); page != nullptr; page = page->next) {
        if (page->base < baseOf(key)) {
            continue;
        }
        const std::uint32_t slot = page->base == baseOf(key) ? slotOf(key) : 0;
        if (void *value = firstValueFrom(*page, slot)) {
            return value;
        }
    }
    return nullptr;
}

void *zuSaHpiIndexGetPrev(uint32_t key, void *index) {
    using namespace zusahpi;
    if (key == 0) { // what a walk asks for after its last step
        return nullptr;
    }
    IndexPage *first = firstPageOf(index);
    for (const IndexPage *page = lastPageNotAbove(first, key); page != nullptr;
         page = pageBefore(first, page)) {
        const std::uint32_t slot = page->base == baseOf(key) ? slotOf(key) : lastSlot;
        if (void *value = lastValueFrom(*page, slot)) {
            return value;
        }
    }
    return nullptr;
}

void *zuSaHpiIndexFree(void *index) {
    using namespace zusahpi;
    for (IndexPage *page = firstPageOf(index); page != nullptr;) {
        IndexPage *next = page->next;
        std::free(page);
        page = next;
    }
    return nullptr;
}
