#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "run/record_fields.h"
#include "run/shared_records.h"

// The scans once more, walked pair by pair, region by region and offset by offset as they are defined. It shares no
// code with the program but the records.

namespace varnolix::testing {

/// The printed fields of a record.
struct WalkedRecord {
    int matrixID1 = 0;
    int matrixID2 = 0;
    std::string direction;
    std::string primaryFlag;
    int position = 0;
    int overlapColumns = 0;
    double similarityScore = 0;
    std::string matchingFormat1;
    std::string matchingFormat2;

    bool operator==(const WalkedRecord&) const = default;
};

inline void PrintTo(const WalkedRecord& record, std::ostream* out) {
    *out << record.matrixID1 << "-" << record.matrixID2 << " " << record.direction << " '" << record.primaryFlag
         << "' position " << record.position << " overlap " << record.overlapColumns << " score " << std::hexfloat
         << record.similarityScore << std::defaultfloat << " " << record.matchingFormat1 << ", "
         << record.matchingFormat2;
}

inline WalkedRecord walked(const dataCombinedScore& record) {
    return {record.matrixID1,
            record.matrixID2,
            text(record.direction),
            record.primaryFlag == PrimaryFlag::yes ? "Y" : "",
            static_cast<int>(record.position),
            static_cast<int>(record.overlap),
            record.similarityScore,
            text(record.matchingFormat1),
            text(record.matchingFormat2)};
}

inline std::vector<WalkedRecord> walked(const std::vector<dataCombinedScore>& list) {
    std::vector<WalkedRecord> records;
    for (const dataCombinedScore& record : list) records.push_back(walked(record));
    return records;
}

/// A column of motif i on a column of motif j.
struct ColumnPair {
    std::size_t i;
    std::size_t j;
};

/// One offset of one region.
struct WalkedOffset {
    int offset;
    std::vector<ColumnPair> pairs;  ///< in the order of the walk
};

enum class Region { first, second };

/// The offsets of a region of a pair with these lengths.
inline std::vector<WalkedOffset> walkRegion(bool isForward, Region region, int lengthI, int lengthJ, int least) {
    const bool isFirst = region == Region::first;
    const int lengthB = isFirst ? lengthI : lengthJ;  // slides
    const int lengthA = isFirst ? lengthJ : lengthI;
    std::vector<WalkedOffset> offsets;
    for (int p = 0; p <= lengthA - least; ++p) {
        WalkedOffset& walk = offsets.emplace_back();
        walk.offset = p;
        const int columns = std::min(lengthB, lengthA - p);
        for (int k = 0; k < columns; ++k) {
            const int b = isForward ? k : lengthB - 1 - k;
            const int a = isForward ? p + k : lengthA - 1 - p - k;
            walk.pairs.push_back(isFirst ? ColumnPair{static_cast<std::size_t>(b), static_cast<std::size_t>(a)}
                                         : ColumnPair{static_cast<std::size_t>(a), static_cast<std::size_t>(b)});
        }
    }
    return offsets;
}

inline double walkedMean(const Matrix& x, const Matrix& y, const std::vector<ColumnPair>& pairs) {
    long double sum = 0;
    for (const ColumnPair& pair : pairs) {
        for (std::size_t base = 0; base < 4; ++base) {
            const double cell = 1.0 - std::fabs(x[pair.i][base] - y[pair.j][base]);
            sum += cell;
        }
    }
    return static_cast<double>(sum / (4.0L * static_cast<long double>(pairs.size())));
}

/// The records of one region at or above the cutoff.
inline void walkPair(bool isForward, Region region, const data& i, const data& j, double cutoff,
                     std::vector<WalkedRecord>& records) {
    const auto offsets =
        walkRegion(isForward, region, static_cast<int>(i.matrix.size()), static_cast<int>(j.matrix.size()), 4);
    for (const WalkedOffset& walk : offsets) {
        double best = walkedMean(i.matrix, j.matrix, walk.pairs);
        const char* formats[] = {"Original Motif", "Original Motif"};
        const auto challenge = [&](const Matrix& x, const Matrix& y, const char* format1, const char* format2) {
            const double score = walkedMean(x, y, walk.pairs);
            if (score > best) {
                best = score;
                formats[0] = format1;
                formats[1] = format2;
            }
        };
        challenge(i.matrix, j.revCompMatrix, "Original Motif", "Reverse Complement");
        challenge(i.revCompMatrix, j.matrix, "Reverse Complement", "Original Motif");
        challenge(i.revCompMatrix, j.revCompMatrix, "Reverse Complement", "Reverse Complement");
        if (!(best >= cutoff)) continue;
        const bool isFirst = region == Region::first;
        records.push_back({isFirst ? i.matrixID : j.matrixID, isFirst ? j.matrixID : i.matrixID,
                           isForward ? "Forward" : "Backward", isFirst ? "Y" : "", walk.offset + 1,
                           static_cast<int>(walk.pairs.size()), best, formats[0], formats[1]});
    }
}

/// Both regions, unless one of the motifs is too short.
inline void walkBothRegions(bool isForward, const data& i, const data& j, double cutoff,
                            std::vector<WalkedRecord>& records) {
    if (i.matrix.size() < 4 || j.matrix.size() < 4) return;
    walkPair(isForward, Region::first, i, j, cutoff, records);
    walkPair(isForward, Region::second, i, j, cutoff, records);
}

/// All records of one scan of the motifs with each other, in the order of one thread.
inline std::vector<WalkedRecord> walkMotifs(bool isForward, const std::vector<data>& motifs, double cutoff) {
    std::vector<WalkedRecord> records;
    for (std::size_t i = 0; i + 1 < motifs.size(); ++i) {
        for (std::size_t j = i + 1; j < motifs.size(); ++j) {
            walkBothRegions(isForward, motifs[i], motifs[j], cutoff, records);
        }
    }
    return records;
}

/// The forward records and then the backward ones, for each motif those that store it first.
inline std::vector<std::vector<WalkedRecord>> walkBothScans(const std::vector<data>& motifs, double cutoff) {
    std::vector<std::vector<WalkedRecord>> lists(motifs.size());
    for (const bool isForward : {true, false}) {
        for (WalkedRecord& record : walkMotifs(isForward, motifs, cutoff)) {
            lists[static_cast<std::size_t>(record.matrixID1) - 1].push_back(std::move(record));
        }
    }
    return lists;
}

}  // namespace varnolix::testing
