// Random texts for tests of the parsers. The same seed gives the same texts on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace random_text {

inline std::size_t below(std::mt19937_64 &random, std::size_t limit) {
    return static_cast<std::size_t>(random() % limit);
}

// A time of any magnitude, small ones as often as large ones, both signs.
inline std::int64_t time(std::mt19937_64 &random) {
    const auto bits = static_cast<std::int64_t>(random());
    return bits >> below(random, 64);
}

// Overwrites a byte, inserts one of the `pieces`, or removes some. The text is not empty, before
// and after.
inline void mutate(std::mt19937_64 &random, std::string_view pieces, std::string &text) {
    const std::size_t place = below(random, text.size());
    switch (below(random, 3)) {
    case 0:
        text[place] = static_cast<char>(below(random, 256));
        break;
    case 1:
        text.insert(place, 1, pieces[below(random, pieces.size())]);
        break;
    default:
        text.erase(place, below(random, 20));
        text += pieces[below(random, pieces.size())];
        break;
    }
}

} // namespace random_text
