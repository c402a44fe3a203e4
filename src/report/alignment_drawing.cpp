#include "report/alignment_drawing.h"

#include <algorithm>

namespace varnolix {

namespace {

std::string hyphens(std::ptrdiff_t count) {
    return std::string(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)), '-');
}

const std::string& consensusOf(const data& motif, MatchingFormat format) {
    return format == MatchingFormat::originalMotif ? motif.consensus : motif.revCompConsensus;
}

}  // namespace

AlignmentLines drawAlignment(const data& other, MatchingFormat otherFormat, const data& own, MatchingFormat firstFormat,
                             Direction direction, int position, int overlapColumns) {
    const std::ptrdiff_t otherLength = std::ssize(other.consensus);
    const std::ptrdiff_t ownLength = std::ssize(own.consensus);
    const std::ptrdiff_t length = otherLength + ownLength - overlapColumns;
    const std::string offset = hyphens(position - 1);
    const std::string otherPadding = hyphens(length - otherLength);
    const std::string ownPadding = hyphens(length - ownLength - std::ssize(offset));
    const std::string& otherText = consensusOf(other, otherFormat);
    const std::string& ownText = consensusOf(own, firstFormat);
    if (direction == Direction::forward) return {otherText + otherPadding, offset + ownText + ownPadding};
    return {otherPadding + otherText, ownPadding + ownText + offset};
}

}  // namespace varnolix
