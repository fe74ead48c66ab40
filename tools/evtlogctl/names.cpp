// Names that were looked up once.
#include "tools/evtlogctl/names.h"

#include <array>
#include <limits>
#include <string>
#include <unordered_map>

#include "constants/type_ids.h"
#include "zuSaHpi_default_mainlib.h"
#include "zuSaHpi_mainlib.h"
#include "zuSaHpi_util.h"

namespace zusahpi::evtlogctl {
namespace {

constexpr std::size_t longestName = 64; // and the NUL behind it

// What `look(buffer)` finds for a value of a type, remembered in `names`.
using Names = std::unordered_map<std::uint64_t, std::string>;

template <typename Look>
[[nodiscard]] std::string_view remembered(Names &names, std::uint32_t value, std::uint32_t key,
                                          Look look) {
    constexpr std::size_t most = 1000; // damaged entries may hold any number
    static std::array<char, longestName> buffer{};
    const std::uint64_t place = std::uint64_t{key} << 32 | value;
    const auto known = names.find(place);
    if (known != names.end()) {
        return known->second;
    }
    const char *const name = look(buffer.data());
    if (names.size() < most) {
        return names.emplace(place, name).first->second;
    }
    return name;
}

[[nodiscard]] bool isNumber(std::string_view text) {
    return text.front() == '-' || (text.front() >= '0' && text.front() <= '9');
}

} // namespace

std::string eventTypeName(std::uint32_t type) {
    const char *const word = type <= SAHPI_ET_USER // behind it the keyword has "all"
                                 ? zuSaHpiConfigWord(ZUSAHPI_CONF_SYSLOG_EVENT_TYPE, type)
                                 : nullptr;
    return word != nullptr ? word : std::to_string(type);
}

std::string_view displayName(std::uint32_t value, std::uint32_t typeKey, const char *prefix) {
    static Names names;
    return remembered(names, value, typeKey, [&](char *buffer) {
        return zuSaHpiValueString(value, 0, typeKey, prefix, buffer, longestName);
    });
}

std::optional<std::string_view> standardName(std::uint32_t value, std::uint32_t typeKey) {
    static Names names;
    const std::string_view name = remembered(names, value, typeKey, [&](char *buffer) {
        return zuSaHpiVal2Str(value, buffer, longestName, typeKey);
    });
    return isNumber(name) ? std::nullopt : std::optional(name);
}

std::uint32_t stateKey(SaHpiEventCategoryT category) {
    using Keys = std::array<std::uint32_t, std::numeric_limits<SaHpiEventCategoryT>::max() + 1>;
    static const Keys keys = [] {
        Keys result{};
        for (std::uint32_t each = 0; each < result.size(); ++each) {
            result[each] = zuSaHpiCheckSubType(type_id::eventState, each) != 0
                               ? typeKey(each, type_id::eventState)
                               : type_id::eventState;
        }
        return result;
    }();
    return keys[category];
}

} // namespace zusahpi::evtlogctl
