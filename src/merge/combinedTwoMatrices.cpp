#include "merge/combinedTwoMatrices.h"

namespace varnolix {

namespace {

/// The column of the matrix at this place of the axis, or nullptr if it has none there.
const Column* columnAt(const Matrix& matrix, int first, int place) {
    const int column = place - first;
    return column >= 0 && column < std::ssize(matrix) ? &matrix[static_cast<std::size_t>(column)] : nullptr;
}

Column average(const Column& left, const Column& right) {
    Column mean{};
    for (std::size_t base = 0; base < mean.size(); ++base) mean[base] = (left[base] + right[base]) * 0.5;
    return mean;
}

}  // namespace

Matrix combinedTwoMatrices(const Matrix& matrix1, const Matrix& matrix2, const PairAlignment& alignment) {
    const std::optional<Shifts> shifts = shiftsOf(alignment);
    if (!shifts) return {};
    const int axis = alignment.total();
    const int first1 = firstColumn(alignment.direction, axis, alignment.length1, shifts->first);
    const int first2 = firstColumn(alignment.direction, axis, alignment.length2, shifts->second);
    Matrix combined;
    for (int place = 0; place < axis; ++place) {
        const Column* left = columnAt(matrix1, first1, place);
        const Column* right = columnAt(matrix2, first2, place);
        if (left != nullptr && right != nullptr) {
            combined.push_back(average(*left, *right));
        } else if (left != nullptr || right != nullptr) {
            combined.push_back(left != nullptr ? *left : *right);
        }
    }
    return combined;
}

}  // namespace varnolix
