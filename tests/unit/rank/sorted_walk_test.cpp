#include "rank/sorted_walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <random>
#include <string>

// Equal keys keep their order, so the walk has to agree with a stable sort in the places of the keys, too.

namespace varnolix {
namespace {

using Keys = std::vector<double>;

/// The places of the keys in ascending order. Equal keys keep their order.
std::vector<std::uint32_t> sortedPlaces(const Keys& keys) {
    std::vector<std::uint32_t> places(keys.size());
    std::iota(places.begin(), places.end(), 0U);
    std::stable_sort(places.begin(), places.end(),
                     [&](std::uint32_t left, std::uint32_t right) { return keys[left] < keys[right]; });
    return places;
}

std::vector<SortKey> sortKeysOf(const Keys& keys) {
    std::vector<SortKey> sortKeys;
    for (const double key : keys) {
        sortKeys.emplace_back(
            key, RecordPlace{Direction::forward, 0, Sliding::left, static_cast<std::uint32_t>(sortKeys.size())});
    }
    return sortKeys;
}

std::uint32_t placeOf(const SortKey& key) {
    return key.place().alignment;
}

std::vector<std::uint32_t> walkedPlaces(const Keys& keys) {
    std::vector<SortKey> sortKeys = sortKeysOf(keys);
    SortedWalk walk(sortKeys);
    std::vector<std::uint32_t> places;
    while (!walk.atEnd()) places.push_back(placeOf(walk.next()));
    return places;
}

void expectSorted(const Keys& keys, const std::string& name) {
    EXPECT_TRUE(walkedPlaces(keys) == sortedPlaces(keys)) << name << ", " << keys.size() << " keys";
}

/// `count` keys, each made from its place.
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

TEST(SortedWalk, EqualKeysKeepTheirOrder) {
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
    // Distributed like real scores: whole and half columns plus small differences.
    expectSorted(made(300'000,
                      [&](std::size_t) {
                          return static_cast<double>(engine() % 12) * 0.5 +
                                 static_cast<double>(engine() % 400) * 0x1p-12;
                      }),
                 "scores");
}

TEST(SortedWalk, SamplesThatMisleadChangeNothing) {
    // The sample takes every eighth key. In one list these are the lowest keys, in the other the highest.
    for (const bool isLow : {true, false}) {
        expectSorted(made(1024,
                          [&](std::size_t place) {
                              const double key = static_cast<double>((place * 389) % 1024);
                              return (place % 8 == 0) == isLow ? key - 2000 : key;
                          }),
                     isLow ? "lowest keys in the sample" : "highest keys in the sample");
    }
}

TEST(SortedWalk, ListsAtTheBorderOfPartitioningComeAsSorted) {
    std::mt19937_64 engine(10);
    for (std::size_t count = 250; count < 262; ++count) {
        expectSorted(made(count, [&](std::size_t) { return static_cast<double>(engine() % 9); }), "border");
    }
}

TEST(SortedWalk, ShortWalkGivesTheStartOfTheWholeOne) {
    std::mt19937_64 engine(9);
    const Keys keys = made(5000, [&](std::size_t) { return static_cast<double>(engine() % 300); });
    const std::vector<std::uint32_t> expected = sortedPlaces(keys);
    for (const std::size_t steps : {1U, 2U, 16U, 17U, 60U, 1000U}) {
        std::vector<SortKey> sortKeys = sortKeysOf(keys);
        SortedWalk walk(sortKeys);
        for (std::size_t step = 0; step < steps; ++step) {
            const SortKey key = walk.next();
            ASSERT_EQ(placeOf(key), expected[step]);
            ASSERT_EQ(key.score(), keys[placeOf(key)]);
        }
    }
}

}  // namespace
}  // namespace varnolix
