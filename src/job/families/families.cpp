#include "job/families/families.h"

#include <omp.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

#include "job/counted.h"
#include "job/families/pair_alignment.h"
#include "job/families/placement.h"
#include "job/significance/significance.h"

namespace varnolix::job {

namespace {

/// The tree of all motifs from that of the different ones. Equal motifs are joined first, at height 0, neighbours with
/// neighbours: a tree of so many leaves is as low as can be.
std::vector<TreeMerge> wholeTree(std::span<const EqualMotifs> equal, std::span<const TreeMerge> different) {
    std::vector<TreeMerge> merges;
    std::vector<int> numbers;
    for (const EqualMotifs& group : equal) {
        std::vector<int> row;
        for (const std::size_t motif : group.motifs) row.push_back(-static_cast<int>(motif) - 1);
        while (row.size() > 1) {
            std::vector<int> joined;
            for (std::size_t n = 0; n + 1 < row.size(); n += 2) {
                merges.push_back(orderedMerge(row[n], row[n + 1], 0.0));
                joined.push_back(static_cast<int>(merges.size()));
            }
            if (row.size() % 2 == 1) joined.push_back(row.back());
            row.swap(joined);
        }
        numbers.push_back(row.front());
    }
    const auto before = static_cast<int>(merges.size());
    const auto numberOf = [&](int node) {
        return node < 0 ? numbers[static_cast<std::size_t>(-node - 1)] : node + before;
    };
    for (const TreeMerge& merge : different) {
        merges.push_back(orderedMerge(numberOf(merge.left), numberOf(merge.right), merge.height));
    }
    return merges;
}

/// The distances of all motifs from those of the different ones.
std::vector<double> wholeDistances(std::span<const EqualMotifs> equal, std::size_t motifs,
                                   const std::vector<double>& different) {
    std::vector<std::size_t> groupOf(motifs);
    for (std::size_t group = 0; group < equal.size(); ++group) {
        for (const std::size_t motif : equal[group].motifs) groupOf[motif] = group;
    }
    std::vector<double> distances(pairsOf(motifs), 0.0);
    for (std::size_t motif = 1; motif < motifs; ++motif) {
        for (std::size_t other = 0; other < motif; ++other) {
            if (groupOf[motif] == groupOf[other]) continue;
            distances[pairCell(motif, other)] = different[pairCell(groupOf[motif], groupOf[other])];
        }
    }
    return distances;
}

/// The different motifs, laid together along the tree as far as it is not cut.
class FamilyPlacement {
  public:
    FamilyPlacement(std::span<const data> motifs, std::span<const std::uint32_t> copies, const ColumnPool& pool,
                    std::span<const TreeMerge> merges, const FamilySettings& settings)
        : motifs_(motifs), pool_(pool), merges_(merges), settings_(settings), nodes_(motifs.size() + merges.size()) {
        for (std::size_t n = 0; n < motifs.size(); ++n) {
            nodes_[n] = {placedAlone(n, motifs[n].matrix, copies[n]), 0.0};
        }
    }

    struct Node {
        PlacedGroup group;  ///< empty where its motifs are part of a higher one
        double height = 0.0;
    };

    /// The groups that are left, each a family.
    std::vector<Node> place() {
        const std::vector<std::vector<std::size_t>> levels = mergesByLevel();
        for (const std::vector<std::size_t>& level : levels) {
            const auto count = static_cast<std::ptrdiff_t>(level.size());
#pragma omp parallel for schedule(dynamic, 1)
            for (std::ptrdiff_t n = 0; n < count; ++n) join(level[static_cast<std::size_t>(n)]);
        }
        std::vector<Node> families;
        for (Node& node : nodes_) {
            if (!node.group.motifs.empty()) families.push_back(std::move(node));
        }
        return families;
    }

  private:
    std::size_t placeOf(int node) const {
        return node < 0 ? static_cast<std::size_t>(-node - 1) : motifs_.size() + static_cast<std::size_t>(node - 1);
    }

    /// The merges below the cut: first those of two motifs, then each behind those below it.
    std::vector<std::vector<std::size_t>> mergesByLevel() const {
        std::vector<std::vector<std::size_t>> levels;
        std::vector<std::size_t> levelOf(nodes_.size(), 0);
        for (std::size_t n = 0; n < merges_.size() && merges_[n].height <= settings_.cut; ++n) {
            const std::size_t level = std::max(levelOf[placeOf(merges_[n].left)], levelOf[placeOf(merges_[n].right)]);
            levelOf[motifs_.size() + n] = level + 1;
            if (levels.size() == level) levels.emplace_back();
            levels[level].push_back(n);
        }
        return levels;
    }

    WindowChances chancesOf(const PlacedGroup& group, AxisPart part) const {
        const bool isMotif = group.motifs.size() == 1;
        return {meansOf(group, part), pool_, isMotif ? &group.motifs.front().motif : nullptr};
    }

    void join(std::size_t merge) {
        Node& left = nodes_[placeOf(merges_[merge].left)];
        Node& right = nodes_[placeOf(merges_[merge].right)];
        const AxisPart part = withoutFlanks(left.group, settings_.flanks);
        const AxisPart otherPart = withoutFlanks(right.group, settings_.flanks);
        const MotifAlignment best = alignmentOf(chancesOf(left.group, part), chancesOf(right.group, otherPart));
        std::size_t otherFirst = otherPart.first;
        if (best.isOpposite) {
            reverseGroup(right.group);
            otherFirst = right.group.columns.size() - otherPart.first - otherPart.columns;
        }
        const int shift = best.shift + static_cast<int>(otherFirst) - static_cast<int>(part.first);
        joinGroups(left.group, std::move(right.group), shift);
        right.group = {};
        nodes_[motifs_.size() + merge] = {std::move(left.group), merges_[merge].height};
        left.group = {};
    }

    std::span<const data> motifs_;
    const ColumnPool& pool_;
    std::span<const TreeMerge> merges_;
    const FamilySettings& settings_;
    std::vector<Node> nodes_;
};

/// A family before its equal motifs are told apart.
struct CommonMotif {
    FamilyPlacement::Node node;
    AxisPart part;
    Matrix matrix;
    std::vector<double> distances;  // of node.group.motifs
};

/// Turns the family so that its first motif lies on the forward strand.
CommonMotif commonMotifOf(FamilyPlacement::Node node, double flanks) {
    const auto first = std::ranges::min_element(node.group.motifs, {}, &PlacedMotif::motif);
    if (first->isReversed) reverseGroup(node.group);
    CommonMotif common;
    common.part = withoutFlanks(node.group, flanks);
    common.matrix = meansOf(node.group, common.part);
    common.distances.resize(node.group.motifs.size());
    common.node = std::move(node);
    return common;
}

/// Works out how far the motifs are from the common motifs of their families.
void measureDistances(std::vector<CommonMotif>& families, std::span<const data> motifs, const ColumnPool& pool) {
    // The chances of a motif take up to some megabytes, so only some families are worked on at a time.
    constexpr std::size_t familiesAtOnce = 64;
    for (std::size_t begin = 0; begin < families.size(); begin += familiesAtOnce) {
        const std::size_t end = std::min(families.size(), begin + familiesAtOnce);
        std::vector<std::optional<WindowChances>> chances(end - begin);
        std::vector<std::pair<std::size_t, std::size_t>> members;  // family and place in it
        for (std::size_t family = begin; family < end; ++family) {
            const std::size_t count = families[family].distances.size();
            for (std::size_t n = 0; count > 1 && n < count; ++n) members.emplace_back(family, n);
        }
        const auto some = static_cast<std::ptrdiff_t>(end - begin);
#pragma omp parallel for schedule(dynamic, 1)
        for (std::ptrdiff_t n = 0; n < some; ++n) {
            const CommonMotif& family = families[begin + static_cast<std::size_t>(n)];
            if (family.distances.size() < 2) continue;
            chances[static_cast<std::size_t>(n)].emplace(family.matrix, pool, nullptr);
        }
        const auto count = static_cast<std::ptrdiff_t>(members.size());
#pragma omp parallel for schedule(dynamic, 1)
        for (std::ptrdiff_t n = 0; n < count; ++n) {
            const auto [family, place] = members[static_cast<std::size_t>(n)];
            const std::size_t motif = families[family].node.group.motifs[place].motif;
            const WindowChances member(motifs[motif].matrix, pool, &motif);
            families[family].distances[place] = alignmentOf(member, *chances[family - begin]).distance;
        }
    }
}

/// The family with all its motifs.
Family wholeFamily(const CommonMotif& common, std::span<const EqualMotifs> equal,
                   std::span<const std::size_t> placeAmongLeaves) {
    Family family;
    family.cutHeight = common.node.height;
    family.commonMotif = common.matrix;
    for (std::size_t n = 0; n < common.distances.size(); ++n) {
        const PlacedMotif& placed = common.node.group.motifs[n];
        const EqualMotifs& group = equal[placed.motif];
        const int offset = placed.offset - static_cast<int>(common.part.first);
        for (std::size_t copy = 0; copy < group.motifs.size(); ++copy) {
            family.members.push_back(
                {group.motifs[copy], placed.isReversed != group.isOpposite[copy], offset, common.distances[n]});
        }
    }
    std::ranges::sort(family.members, {}, [&](const FamilyMember& member) { return placeAmongLeaves[member.motif]; });
    return family;
}

std::size_t firstMotif(const Family& family) {
    return std::ranges::min_element(family.members, {}, &FamilyMember::motif)->motif;
}

std::string noteOf(std::size_t motifs, const std::string& rest) {
    return "families: " + counted(motifs, "motif") + (motifs == 1 ? " has " : " have ") + rest;
}

std::vector<std::string> notesOf(std::span<const data> motifs) {
    const auto isShort = [](const data& motif) { return motif.matrix.size() < leastColumns; };
    const auto isLong = [](const data& motif) { return motif.matrix.size() > mostQueryColumns; };
    const auto shorts = static_cast<std::size_t>(std::ranges::count_if(motifs, isShort));
    const auto longs = static_cast<std::size_t>(std::ranges::count_if(motifs, isLong));
    std::vector<std::string> notes;
    if (shorts > 0) notes.push_back(noteOf(shorts, "fewer than four columns, so only equal ones are joined."));
    if (longs > 0) {
        notes.push_back(noteOf(longs,
                               "more than 100 columns; their distances take the normal distribution in place of exact "
                               "p-values."));
    }
    return notes;
}

}  // namespace

std::string familyName(std::size_t place) {
    return "family_" + std::to_string(place + 1);
}

Families familiesOf(std::span<const data> motifs, const FamilySettings& settings) {
    FamilyDistances distances(motifs);
    distances.takeAll();
    return familiesOf(motifs, distances, settings);
}

Families familiesOf(std::span<const data> motifs, FamilyDistances& given, const FamilySettings& settings) {
    const std::vector<EqualMotifs>& equal = given.equal();
    const std::vector<data>& different = given.different();
    const ColumnPool& pool = given.pool();
    std::vector<double> distances = given.finished();
    const std::vector<std::size_t> sizes(given.copies().begin(), given.copies().end());
    Families result;
    if (motifs.size() <= settings.keptDistances) result.distances = wholeDistances(equal, motifs.size(), distances);
    const std::vector<TreeMerge> merges = treeOf(distances, sizes, settings.linkage);
    std::vector<double>().swap(distances);

    std::vector<CommonMotif> common;
    for (FamilyPlacement::Node& node : FamilyPlacement(different, given.copies(), pool, merges, settings).place()) {
        common.push_back(commonMotifOf(std::move(node), settings.flanks));
    }
    measureDistances(common, different, pool);

    result.merges = wholeTree(equal, merges);
    result.leafOrder = leavesOf(result.merges, motifs.size());
    result.cut = settings.cut;
    result.linkage = linkageName(settings.linkage);
    result.notes = notesOf(motifs);
    std::vector<std::size_t> placeAmongLeaves(motifs.size());
    for (std::size_t n = 0; n < motifs.size(); ++n) placeAmongLeaves[result.leafOrder[n]] = n;
    for (const CommonMotif& family : common) {
        result.families.push_back(wholeFamily(family, equal, placeAmongLeaves));
    }
    std::ranges::sort(result.families, [](const Family& one, const Family& other) {
        if (one.members.size() != other.members.size()) return one.members.size() > other.members.size();
        return firstMotif(one) < firstMotif(other);
    });
    return result;
}

Families leftFamilies(FamilyDistances& distances, const FamilySettings& settings) {
    const double begin = omp_get_wtime();
    Families families = familiesOf(Datasets, distances, settings);
    stageTimes.push_back({"families", omp_get_wtime() - begin});
    return families;
}

}  // namespace varnolix::job
