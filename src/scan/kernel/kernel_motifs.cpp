#include "scan/kernel/kernel_motifs.h"

#include <algorithm>
#include <cmath>

#include "scan/kernel/exact_sums.h"

namespace varnolix {

namespace {

bool canBeExact(const std::array<const Matrix*, 2>& strands) {
    return kernel::hasExtendedPrecision && strands[0]->size() <= mostKernelColumns &&
           strands[0]->size() == strands[1]->size() && liesWithinUnit(*strands[0]) && liesWithinUnit(*strands[1]);
}

KernelLevels levelsOf(const Column& column) {
    KernelLevels result;
    std::transform(column.begin(), column.end(), result.levels.begin(),
                   [](double value) { return static_cast<std::uint8_t>(std::lround(value * kernel::levelsPerOne)); });
    return result;
}

}  // namespace

bool liesWithinUnit(const Matrix& matrix) {
    return std::all_of(matrix.begin(), matrix.end(), [](const Column& column) {
        return std::all_of(column.begin(), column.end(), [](double value) { return value >= 0.0 && value <= 1.0; });
    });
}

KernelMotifs::KernelMotifs(std::span<const data> motifs) {
    std::vector<Strands> strands;
    strands.reserve(motifs.size());
    for (const data& motif : motifs) {
        strands.push_back({&motif.matrix, &motif.revCompMatrix});
    }
    build(strands);
}

KernelMotifs::KernelMotifs(const Matrix& matrix, const Matrix& revCompMatrix) {
    const Strands strands = {&matrix, &revCompMatrix};
    build({&strands, 1});
}

void KernelMotifs::build(std::span<const Strands> motifs) {
    std::size_t columns = columnsPastEnd;
    motifs_.reserve(motifs.size());
    for (const Strands& strands : motifs) {
        motifs_.push_back({0, static_cast<std::uint32_t>(strands[0]->size()), canBeExact(strands)});
        // Reserve exactly what is needed, so that AddressSanitizer notices reads past the end.
        if (takesPart(motifs_.size() - 1)) columns += 2 * strands[0]->size();
    }
    columns_.reserve(columns);
    levels_.reserve(columns);
    std::vector<std::uint32_t> block;
    for (std::size_t first = 0; first < size(); first += blockSize) {
        block.clear();
        for (std::size_t motif = first; motif < std::min(size(), first + blockSize); ++motif) {
            if (takesPart(motif)) {
                block.push_back(static_cast<std::uint32_t>(motif));
            }
        }
        std::stable_sort(block.begin(), block.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return length(a) < length(b); });
        // Columns are stored in the order in which groups are scored.
        for (const std::uint32_t motif : block) {
            appendColumns(motif, motifs[motif]);
        }
        appendGroups(block);
        blockEnds_.push_back(groups_.size());
    }
    columns_.resize(columns_.size() + columnsPastEnd);
    levels_.resize(levels_.size() + columnsPastEnd);
}

void KernelMotifs::appendColumns(std::size_t motif, const Strands& strands) {
    motifs_[motif].firstColumn = columns_.size();
    for (const Matrix* strand : strands) {
        for (const Column& column : *strand) {
            columns_.push_back({column});
            levels_.push_back(levelsOf(column));
        }
    }
}

void KernelMotifs::appendGroups(std::span<const std::uint32_t> block) {
    while (!block.empty()) {
        std::size_t lanes = 1;
        while (lanes < std::min(kernelLanes, block.size()) && length(block[lanes]) == length(block[0])) {
            ++lanes;
        }
        KernelGroup group{{}, lanes, length(block[0]), pairs_.size()};
        for (std::size_t lane = 0; lane < kernelLanes; ++lane) {
            group.motifs[lane] = block[std::min(lane, lanes - 1)];
        }
        groups_.push_back(group);
        appendPairs(group);
        block = block.subspan(lanes);
    }
}

void KernelMotifs::appendPairs(const KernelGroup& group) {
    for (std::size_t k = 0; k < group.length; ++k) {
        for (const std::size_t strandStart : {std::size_t{0}, group.length}) {
            KernelLevelPairs pairs{};
            for (std::size_t lane = 0; lane < kernelLanes; ++lane) {
                const KernelLevels* column = levels(group.motifs[lane]) + strandStart + k;
                pairs.lanes[lane][0] = column[0];
                if (k + 1 < group.length) {
                    pairs.lanes[lane][1] = column[1];
                }
            }
            pairs_.push_back(pairs);
        }
    }
}

std::span<const KernelGroup> KernelMotifs::groups(std::size_t block) const {
    const std::size_t first = block == 0 ? 0 : blockEnds_[block - 1];
    return std::span(groups_).subspan(first, blockEnds_[block] - first);
}

}  // namespace varnolix
