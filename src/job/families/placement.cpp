#include "job/families/placement.h"

#include <algorithm>

#include "job/significance/column_pool.h"

namespace varnolix::job {

namespace {

/// The mean lies between both values in spite of all rounding, so equal columns stay as they are.
void addTo(WeightedColumn& column, const WeightedColumn& other) {
    if (column.weight <= 0.0) {
        column = other;
        return;
    }
    const double weight = column.weight + other.weight;
    for (std::size_t base = 0; base < column.mean.size(); ++base) {
        const auto [least, greatest] = std::minmax(column.mean[base], other.mean[base]);
        const double mean = (column.mean[base] * column.weight + other.mean[base] * other.weight) / weight;
        column.mean[base] = std::clamp(mean, double{least}, double{greatest});
    }
    column.weight = weight;
}

}  // namespace

PlacedGroup placedAlone(std::size_t motif, const Matrix& matrix, double weight) {
    PlacedGroup group{{{motif, false, 0, static_cast<int>(matrix.size())}}, {}, weight};
    for (const Column& column : usableMatrix(matrix)) group.columns.push_back({column, weight});
    return group;
}

void reverseGroup(PlacedGroup& group) {
    std::reverse(group.columns.begin(), group.columns.end());
    for (WeightedColumn& column : group.columns) std::reverse(column.mean.begin(), column.mean.end());
    for (PlacedMotif& placed : group.motifs) {
        placed.isReversed = !placed.isReversed;
        placed.offset = static_cast<int>(group.columns.size()) - placed.offset - placed.columns;
    }
}

void joinGroups(PlacedGroup& group, PlacedGroup other, int shift) {
    // Both start at column 0 or later of the new axis.
    const int before = std::max(0, shift);
    const int otherBefore = std::max(0, -shift);
    const auto first = static_cast<std::ptrdiff_t>(before);
    const auto otherFirst = static_cast<std::size_t>(otherBefore);
    group.columns.insert(group.columns.begin(), static_cast<std::size_t>(first), WeightedColumn{});
    group.columns.resize(std::max(group.columns.size(), otherFirst + other.columns.size()));
    for (std::size_t k = 0; k < other.columns.size(); ++k) addTo(group.columns[otherFirst + k], other.columns[k]);
    for (PlacedMotif& placed : group.motifs) placed.offset += before;
    for (PlacedMotif& placed : other.motifs) {
        placed.offset += otherBefore;
        group.motifs.push_back(placed);
    }
    group.weight += other.weight;
}

AxisPart withoutFlanks(const PlacedGroup& group, double share) {
    const auto lighter = [](const WeightedColumn& one, const WeightedColumn& two) { return one.weight < two.weight; };
    const auto weightiest = std::ranges::max_element(group.columns, lighter);
    if (weightiest == group.columns.end()) return {};
    const double least = std::min(share * group.weight, weightiest->weight);
    const auto stays = [&](const WeightedColumn& column) { return column.weight >= least; };
    const auto begin = std::ranges::find_if(group.columns, stays);
    const auto end = std::find_if(group.columns.rbegin(), group.columns.rend(), stays).base();
    return {static_cast<std::size_t>(begin - group.columns.begin()), static_cast<std::size_t>(end - begin)};
}

Matrix meansOf(const PlacedGroup& group, AxisPart part) {
    Matrix means;
    for (std::size_t k = part.first; k < part.first + part.columns; ++k) means.push_back(group.columns[k].mean);
    return means;
}

}  // namespace varnolix::job
