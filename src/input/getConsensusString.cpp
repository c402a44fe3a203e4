#include "input/getConsensusString.h"

#include <algorithm>

namespace varnolix {

namespace {

/// Letters by the set of bases they stand for: bit 0 is A, bit 1 is C, bit 2 is G, bit 3 is T.
constexpr char letterOfBases[] = {'-', 'A', 'C', 'M', 'G', 'R', 'S', 'V', 'T', 'W', 'Y', 'H', 'K', 'D', 'B', 'N'};

constexpr double majority = 0.5;
constexpr double leadOverSecond = 2.0;
constexpr double share = 0.75;

/// Sorts in ascending order and keeps the order of equal values. This is the insertion sort of the standard library,
/// which moves a cell below the first one straight to the front. It is spelt out because not-a-number cells have no
/// order, so the result depends on the steps of the sort.
void sortCells(std::array<tempArray, 4>& cells) {
    for (std::size_t next = 1; next < cells.size(); ++next) {
        const tempArray cell = cells[next];
        std::size_t place = next;
        if (cell.value < cells[0].value) {
            for (; place > 0; --place) cells[place] = cells[place - 1];
        } else {
            for (; cell.value < cells[place - 1].value; --place) cells[place] = cells[place - 1];
        }
        cells[place] = cell;
    }
}

constexpr unsigned bit(const tempArray& cell) {
    return 1U << cell.baseIndex;
}

}  // namespace

std::string getConsensusString(const Matrix& matrix) {
    std::string consensus;
    consensus.reserve(matrix.size());
    for (const Column& column : matrix) {
        std::array<tempArray, 4> cells{};
        for (int base = 0; base < 4; ++base) {
            cells[static_cast<std::size_t>(base)] = {column[static_cast<std::size_t>(base)], base};
        }
        sortCells(cells);
        const tempArray& top = cells[3];
        const tempArray& second = cells[2];
        const tempArray& third = cells[1];
        if (top.value > majority && top.value / second.value >= leadOverSecond) {
            consensus += letterOfBases[bit(top)];
        } else if (top.value + second.value > share) {
            const bool twoMajorities = top.value > majority && second.value >= majority;
            if (!twoMajorities) consensus += letterOfBases[bit(top) | bit(second)];
        } else if (top.value + second.value + third.value > share) {
            consensus += letterOfBases[bit(top) | bit(second) | bit(third)];
        } else {
            consensus += 'N';
        }
    }
    return consensus;
}

}  // namespace varnolix
