#pragma once

#include <cstddef>
#include <vector>

#include "run/scored_shift.h"
#include "run/shared_records.h"

// The plain form of scoring: four walks over each pair of motifs, as the definition tells it and with no shortcut. It
// is the yardstick of the program, both for results and for speed, and shares no code with it but the records.

namespace varnolix::plain {

inline constexpr std::size_t leastOverlap = 4;

/// The first has motif i slide along j, the second j along i.
enum class Region { first, second };

/// One offset of one region: from which columns of the two motifs a walk starts, and how it goes on.
struct Walk {
    std::size_t offset;  ///< of the sliding motif; in a backward scan counted from the ends
    std::size_t columns;
    std::size_t iStart;
    std::size_t jStart;
    std::size_t step;  ///< 1, or what wraps round to -1 in a backward scan
};

/// A kept alignment.
struct Alignment {
    Direction direction;
    Region region;
    std::size_t offset;
    std::size_t overlap;
    double score;
    Orientation orientation;
};

/// The walks of a region of a pair with these lengths, by offset.
std::vector<Walk> walksOf(Direction direction, Region region, std::size_t lengthI, std::size_t lengthJ,
                          std::size_t least = leastOverlap);

/// All alignments of outer motif i and inner motif j that reach the cutoff in one of the scans, the first region's and
/// then the second's. None if a motif is too short.
void scanPair(const data& i, const data& j, Direction direction, double cutoff, std::vector<Alignment>& kept);

/// The forward scan's, then the backward scan's.
void scorePair(const data& i, const data& j, double cutoff, std::vector<Alignment>& kept);

}  // namespace varnolix::plain
