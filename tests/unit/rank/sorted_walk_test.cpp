#include "rank/sorted_walk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <random>
#include <string>

#include "rank/comparison.h"

// Which of several records of equal score comes first is decided by std::sort, so the walk has to agree with it place
// by place and not only key by key.

namespace varnolix {
namespace {

using Keys = std::vector<double>;

/// The places of the keys in the order of std::sort on whole records.
std::vector<std::uint32_t> sortedPlaces(const Keys& keys) {
    std::vector<dataCombinedScore> records;
    for (const double key : keys) {
        dataCombinedScore record{};
        record.matrixID1 = static_cast<std::int32_t>(records.size());
        record.combinedScore = key;
        records.push_back(record);
    }
    std::sort(records.begin(), records.end(), comparison);
    std::vector<std::uint32_t> places;
    for (const dataCombinedScore& record : records) places.push_back(static_cast<std::uint32_t>(record.matrixID1));
    return places;
}

std::vector<std::uint32_t> walkedPlaces(const Keys& keys) {
    std::vector<SortKey> sortKeys;
    for (const double key : keys) sortKeys.push_back({key, static_cast<std::uint32_t>(sortKeys.size())});
    SortedWalk walk(sortKeys);
    std::vector<std::uint32_t> places;
    while (!walk.atEnd()) places.push_back(walk.next().place);
    return places;
}

void expectSorted(const Keys& keys, const std::string& name) {
    EXPECT_TRUE(walkedPlaces(keys) == sortedPlaces(keys)) << name << ", " << keys.size() << " keys";
}

/// `count` keys by their places.
Keys made(std::size_t count, const std::function<double(std::size_t)>& keyAt) {
    Keys keys;
    for (std::size_t place = 0; place < count; ++place) keys.push_back(keyAt(place));
    return keys;
}

TEST(SortedWalk, EmptyListIsAtItsEnd) {
    std::vector<SortKey> none;
    EXPECT_TRUE(SortedWalk(none).atEnd());
}

TEST(SortedWalk, WalksFromTheLowestKeyUpwards) {
    EXPECT_EQ(walkedPlaces({3, 1, 2}), (std::vector<std::uint32_t>{1, 2, 0}));
    EXPECT_EQ(walkedPlaces({5}), (std::vector<std::uint32_t>{0}));
}

TEST(SortedWalk, EqualKeysOfShortListsKeepTheirOrder) {
    EXPECT_EQ(walkedPlaces({1, 0, 1, 0, 1}), (std::vector<std::uint32_t>{1, 3, 0, 2, 4}));
}

TEST(SortedWalk, ShapedListsComeAsSorted) {
    for (std::size_t count = 0; count < 200; ++count) {
        const auto number = [](std::size_t place) { return static_cast<double>(place); };
        expectSorted(made(count, number), "ascending");
        expectSorted(made(count, [&](std::size_t place) { return number(count - place); }), "descending");
        expectSorted(made(count, [](std::size_t) { return 0.5; }), "equal");
        expectSorted(made(count, [&](std::size_t place) { return number(std::min(place, count - place)); }),
                     "organ pipe");
        expectSorted(made(count, [&](std::size_t place) { return number(std::max(place, count - place)); }), "valley");
        expectSorted(made(count, [&](std::size_t place) { return number(place % 7); }), "saw");
        expectSorted(made(count, [&](std::size_t place) { return number(place % 2); }), "two values in turn");
        expectSorted(made(count, [&](std::size_t place) { return number(place < count / 2 ? 1 : 0); }), "two runs");
        expectSorted(made(count, [&](std::size_t place) { return place + 1 == count ? -1.0 : number(place); }),
                     "lowest last");
        expectSorted(made(count, [&](std::size_t place) { return place % 3 == 0 ? -0.0 : 0.0; }),
                     "zeros of both signs");
    }
}

TEST(SortedWalk, RandomListsComeAsSorted) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        std::mt19937_64 engine(seed);
        const std::size_t count = engine() % 3000;
        const std::uint64_t values = seed % 3 == 0 ? 3 : seed % 3 == 1 ? 50 : 1'000'000;
        expectSorted(made(count, [&](std::size_t) { return static_cast<double>(engine() % values) * 0.125; }),
                     "seed " + std::to_string(seed));
    }
}

TEST(SortedWalk, LongListComesAsSorted) {
    std::mt19937_64 engine(5);
    // As scores are spread: whole and half columns, and small differences of score.
    expectSorted(made(300'000,
                      [&](std::size_t) {
                          return static_cast<double>(engine() % 12) * 0.5 +
                                 static_cast<double>(engine() % 400) * 0x1p-12;
                      }),
                 "scores");
}

/// A list that makes std::sort choose a bad pivot each time, found by sorting values that are fixed only when they are
/// compared (McIlroy, "A killer adversary for quicksort", 1999).
Keys killerKeys(std::size_t count) {
    std::vector<std::size_t> values(count, count);  // `count` means not fixed yet
    std::vector<std::size_t> order(count);
    for (std::size_t place = 0; place < count; ++place) order[place] = place;
    std::size_t fixed = 0;
    std::size_t candidate = 0;
    std::sort(order.begin(), order.end(), [&](std::size_t x, std::size_t y) {
        if (values[x] == count && values[y] == count) values[x == candidate ? x : y] = fixed++;
        if (values[x] == count) {
            candidate = x;
        } else if (values[y] == count) {
            candidate = y;
        }
        return values[x] < values[y];
    });
    return made(count, [&](std::size_t place) { return static_cast<double>(values[place]); });
}

std::size_t comparisonsOf(Keys keys) {
    std::size_t comparisons = 0;
    std::sort(keys.begin(), keys.end(), [&](double x, double y) {
        ++comparisons;
        return x < y;
    });
    return comparisons;
}

TEST(SortedWalk, KillerListsReachTheHeapSort) {
    for (const std::size_t count : {100U, 1000U, 10'000U}) {
        const Keys keys = killerKeys(count);
        Keys shuffled = keys;
        std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1));
        // Partitions that take off next to nothing down to the depth limit, and then a heap sort, cost about twice as
        // much as good partitions.
        ASSERT_GT(comparisonsOf(keys), comparisonsOf(shuffled) * 3 / 2);
        expectSorted(keys, "killer");
        // Ties among the keys as well.
        expectSorted(made(count, [&](std::size_t place) { return std::floor(keys[place] / 3); }), "killer with ties");
    }
}

TEST(SortedWalk, KillerListBehindGoodOnesComesAsSorted) {
    Keys keys = killerKeys(2000);
    std::mt19937_64 engine(8);
    for (int round = 0; round < 2000; ++round) keys.push_back(static_cast<double>(engine() % 4000));
    expectSorted(keys, "killer and random");
    std::reverse(keys.begin(), keys.end());
    expectSorted(keys, "random and killer backwards");
}

TEST(SortedWalk, ShortWalkGivesTheStartOfTheWholeOne) {
    std::mt19937_64 engine(9);
    const Keys keys = made(5000, [&](std::size_t) { return static_cast<double>(engine() % 300); });
    const std::vector<std::uint32_t> expected = sortedPlaces(keys);
    for (const std::size_t steps : {1U, 2U, 16U, 17U, 60U, 1000U}) {
        std::vector<SortKey> sortKeys;
        for (const double key : keys) sortKeys.push_back({key, static_cast<std::uint32_t>(sortKeys.size())});
        SortedWalk walk(sortKeys);
        for (std::size_t step = 0; step < steps; ++step) {
            const SortKey key = walk.next();
            ASSERT_EQ(key.place, expected[step]);
            ASSERT_EQ(key.key, keys[key.place]);
        }
    }
}

}  // namespace
}  // namespace varnolix
