// A target with a defect, which the fuzzer must find: proof that the others would be found out too.
// It is reached only by the whole name of an entity type, so blind changes do not lead there.

#include "tests/fuzz/harness.h"

namespace {

[[nodiscard]] bool isEntityType(const char *name) {
    constexpr std::uint32_t entityType = 10;
    std::uint32_t found = 0;
    (void)zuSaHpiStr2Val(name, entityType, &found); // any of them will do
    return found == entityType;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Memory<char> name = fuzz::textOf({data, size});
    if (!isEntityType(name.get())) {
        return 0;
    }
#if defined(ZUSAHPI_FUZZ_MEMORY)
    const fuzz::Memory<char> copy(static_cast<char *>(std::malloc(size)));
    fuzz::requireInitialised(copy.get(), size); // nobody wrote it
#else
    const fuzz::Memory<char> copy = fuzz::zeros<char>(size);
    std::memcpy(copy.get(), name.get(), size + 1);   // without room for the NUL
    asm volatile("" : : "r"(copy.get()) : "memory"); // or compilers see that nobody reads it
#endif
    return 0;
}
