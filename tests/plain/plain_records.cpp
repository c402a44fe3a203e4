#include "plain/plain_records.h"

#include <array>
#include <cstddef>
#include <utility>

#include "plain/plain_scan.h"
#include "run/record_fields.h"

namespace varnolix::testing {

namespace {

WalkedRecord recordOf(const plain::Alignment& kept, const data& i, const data& j) {
    constexpr const char* original = "Original Motif";
    constexpr const char* reverse = "Reverse Complement";
    // By orientation. In both regions the format of i comes first, whichever motif is stored first.
    constexpr std::array<std::array<const char*, 2>, 4> formats = {
        {{original, original}, {original, reverse}, {reverse, original}, {reverse, reverse}}};
    const auto& [format1, format2] = formats[static_cast<std::size_t>(kept.orientation)];
    const bool isFirst = kept.region == plain::Region::first;
    return {isFirst ? i.matrixID : j.matrixID,
            isFirst ? j.matrixID : i.matrixID,
            kept.direction == Direction::forward ? "Forward" : "Backward",
            isFirst ? "Y" : "",
            static_cast<int>(kept.offset) + 1,
            static_cast<int>(kept.overlap),
            kept.score,
            format1,
            format2};
}

}  // namespace

void PrintTo(const WalkedRecord& record, std::ostream* out) {
    *out << record.matrixID1 << "-" << record.matrixID2 << " " << record.direction << " '" << record.primaryFlag
         << "' position " << record.position << " overlap " << record.overlapColumns << " score " << std::hexfloat
         << record.similarityScore << std::defaultfloat << " " << record.matchingFormat1 << ", "
         << record.matchingFormat2;
}

WalkedRecord walked(const dataCombinedScore& record) {
    return {record.matrixID1,
            record.matrixID2,
            directionText(record.direction),
            record.primaryFlag == PrimaryFlag::yes ? "Y" : "",
            static_cast<int>(record.position),
            static_cast<int>(record.overlap),
            record.similarityScore,
            formatText(record.matchingFormat1),
            formatText(record.matchingFormat2)};
}

std::vector<WalkedRecord> walked(const std::vector<dataCombinedScore>& list) {
    std::vector<WalkedRecord> records;
    for (const dataCombinedScore& record : list) records.push_back(walked(record));
    return records;
}

void walkBothRegions(bool isForward, const data& i, const data& j, double cutoff, std::vector<WalkedRecord>& records) {
    std::vector<plain::Alignment> kept;
    plain::scanPair(i, j, isForward ? Direction::forward : Direction::backward, cutoff, kept);
    for (const plain::Alignment& alignment : kept) records.push_back(recordOf(alignment, i, j));
}

std::vector<WalkedRecord> walkMotifs(bool isForward, const std::vector<data>& motifs, double cutoff) {
    std::vector<WalkedRecord> records;
    for (std::size_t i = 0; i + 1 < motifs.size(); ++i) {
        for (std::size_t j = i + 1; j < motifs.size(); ++j) {
            walkBothRegions(isForward, motifs[i], motifs[j], cutoff, records);
        }
    }
    return records;
}

std::vector<std::vector<WalkedRecord>> walkBothScans(const std::vector<data>& motifs, double cutoff) {
    std::vector<std::vector<WalkedRecord>> lists(motifs.size());
    for (const bool isForward : {true, false}) {
        for (WalkedRecord& record : walkMotifs(isForward, motifs, cutoff)) {
            lists[static_cast<std::size_t>(record.matrixID1) - 1].push_back(std::move(record));
        }
    }
    return lists;
}

}  // namespace varnolix::testing
