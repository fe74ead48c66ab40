// The comparison of two readings.
#include "tools/evtlogctl/sel_news.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "tools/evtlogctl/sel_counts.h"

namespace zusahpi::sel {
namespace {

struct Matched {
    std::vector<std::size_t> unknown; // places in the reading
    std::optional<std::size_t> last;  // place of the last known record
};

[[nodiscard]] Matched match(const Known &known, const std::vector<Record> &reading) {
    Counts counts = countsOf(known.records);
    Matched matched;
    for (std::size_t place = 0; place < reading.size(); ++place) {
        if (take(counts, reading[place])) {
            matched.last = place;
        } else {
            matched.unknown.push_back(place);
        }
    }
    return matched;
}

[[nodiscard]] std::vector<std::size_t> allPlaces(std::size_t count) {
    std::vector<std::size_t> places(count);
    std::iota(places.begin(), places.end(), std::size_t{0});
    return places;
}

} // namespace

News newsOf(const Known &known, const std::vector<Record> &reading) {
    Matched matched = match(known, reading);
    News news;
    if (known.records.empty()) {
        news.places = std::move(matched.unknown);
        return news;
    }
    news.reaches = std::find(reading.begin(), reading.end(), known.records.back()) != reading.end();
    const bool unknownOnly = !reading.empty() && !matched.last;
    const bool goesOn = known.ofLog ? !unknownOnly : news.reaches || matched.unknown.empty();
    if (!goesOn) {
        news.places = allPlaces(reading.size());
        news.replaced = true;
        return news;
    }
    if (known.ofLog && matched.last) {
        const auto behind =
            std::upper_bound(matched.unknown.begin(), matched.unknown.end(), *matched.last);
        matched.unknown.erase(matched.unknown.begin(), behind);
    }
    news.places = std::move(matched.unknown);
    return news;
}

Known knownAfter(const Known &known, const std::vector<Record> &reading, const News &news,
                 std::size_t added) {
    const bool saysNothing = news.places.empty() && !news.reaches;
    const bool noneArrived = !news.places.empty() && added == 0;
    if (saysNothing || noneArrived) {
        return known;
    }
    Known after;
    after.records.reserve(reading.size());
    auto left = news.places.begin() + static_cast<std::ptrdiff_t>(added);
    for (std::size_t place = 0; place < reading.size(); ++place) {
        if (left != news.places.end() && *left == place) {
            ++left; // to be found new again
        } else {
            after.records.push_back(reading[place]);
        }
    }
    return after;
}

} // namespace zusahpi::sel
