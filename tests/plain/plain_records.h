#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "run/shared_records.h"

// The records that the plain scans leave, with the fields as they are printed.

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

/// What GoogleTest prints of it.
void PrintTo(const WalkedRecord& record, std::ostream* out);

/// The same fields of a record of the program.
WalkedRecord walked(const dataCombinedScore& record);
std::vector<WalkedRecord> walked(const std::vector<dataCombinedScore>& list);

/// Appends the records of a pair in one of the scans, first region first; none if one of the motifs is too short.
void walkBothRegions(bool isForward, const data& i, const data& j, double cutoff, std::vector<WalkedRecord>& records);

/// All records of one scan of the motifs with each other, in the order of one thread.
std::vector<WalkedRecord> walkMotifs(bool isForward, const std::vector<data>& motifs, double cutoff);

/// The forward records and then the backward ones, for each motif those that store it first.
std::vector<std::vector<WalkedRecord>> walkBothScans(const std::vector<data>& motifs, double cutoff);

}  // namespace varnolix::testing
