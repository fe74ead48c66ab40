// How the name of a constant becomes words.

#include "display/display_form.h"

#include <cstdio>
#include <cstring>

#include "zuSaHpi_util.h"

namespace zusahpi::display {

Name registryText(SaHpiInt64T value, std::uint32_t typeId) {
    Name buffer;
    Name name;
    // The time formatter may answer with a text of its own in place of the buffer.
    (void)std::snprintf(name.text, sizeof name.text, "%s",
                        zuSaHpiVal2Str(value, buffer.text, sizeof buffer.text, typeId));
    return name;
}

bool displayForm(SaHpiInt64T value, std::uint32_t typeId, const char *prefix, Name &name) {
    name = registryText(value, typeId);
    const std::size_t prefixLength = std::strlen(prefix);
    if (std::strncmp(name.text, prefix, prefixLength) != 0) {
        return false;
    }
    const char *words = name.text + prefixLength;
    std::memmove(name.text, words, std::strlen(words) + 1);
    makeWords(name.text);
    return true;
}

void makeWords(char *name) {
    constexpr char lowerCaseBit = 0x20;
    bool wordBegins = true;
    for (char *at = name; *at != '\0'; ++at) {
        if (*at == '_' && at != name) {
            *at = ' ';
            wordBegins = true;
        } else if (wordBegins) {
            wordBegins = false;
        } else {
            *at = static_cast<char>(*at | lowerCaseBit);
        }
    }
}

} // namespace zusahpi::display
