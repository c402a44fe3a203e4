#include "merge/matrix_placement.h"

#include <algorithm>

namespace varnolix {

std::optional<Shifts> shiftsOf(const PairAlignment& alignment) {
    if (alignment.position < 2) return Shifts{0, 0};
    const int shift = alignment.position - 1;
    const int longer = std::max(alignment.length1, alignment.length2);
    if (alignment.total() < longer) return std::nullopt;
    const bool isFirstLonger = alignment.length1 >= alignment.length2;
    const bool isInside = alignment.total() == longer;
    const bool movesFirst = isInside ? !isFirstLonger : alignment.primaryFlag == PrimaryFlag::yes;
    return movesFirst ? Shifts{shift, 0} : Shifts{0, shift};
}

}  // namespace varnolix
