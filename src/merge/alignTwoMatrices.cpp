#include "merge/alignTwoMatrices.h"

#include <algorithm>

#include "input/getConsensusString.h"

namespace varnolix {

namespace {

/// A line of hyphens with the text placed on it, cut off at the ends of the line.
std::string lineWith(const std::string& text, Direction direction, int length, int shift) {
    std::string line(static_cast<std::size_t>(length), '-');
    const int first = firstColumn(direction, length, static_cast<int>(text.size()), shift);
    for (int letter = 0; letter < std::ssize(text); ++letter) {
        const int column = first + letter;
        if (column >= 0 && column < length) {
            line[static_cast<std::size_t>(column)] = text[static_cast<std::size_t>(letter)];
        }
    }
    return line;
}

/// The exception that alignTwoMatrices.h describes.
bool isLengthened(const PairAlignment& alignment) {
    const bool bothStickOut = alignment.total() > std::max(alignment.length1, alignment.length2);
    return alignment.position >= 2 && bothStickOut && alignment.length2 > alignment.length1 &&
           alignment.primaryFlag != PrimaryFlag::yes && alignment.overlap != alignment.length1 - alignment.position + 1;
}

/// The first motif fills the whole axis, so its line is its consensus, even if that has fewer letters than columns.
bool isWholeFirst(const PairAlignment& alignment) {
    return alignment.position >= 2 && alignment.total() == alignment.length1 && alignment.length1 > alignment.length2;
}

}  // namespace

std::string alignTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, const PairAlignment& alignment) {
    int length = alignment.total();
    if (length < 1) return "_";
    const std::optional<Shifts> shifts = shiftsOf(alignment);
    if (!shifts)
        return std::string(static_cast<std::size_t>(length), '-') + "_" +
               std::string(static_cast<std::size_t>(length), '-');
    if (isLengthened(alignment)) length += alignment.length2 + alignment.position - 1;
    const std::string consensus1 = getConsensusString(matrix1);
    const std::string line1 =
        isWholeFirst(alignment) ? consensus1 : lineWith(consensus1, alignment.direction, length, shifts->first);
    return line1 + "_" + lineWith(getConsensusString(matrix2), alignment.direction, length, shifts->second);
}

}  // namespace varnolix
