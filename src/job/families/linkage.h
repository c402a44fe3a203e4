#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

// The tree of a table of distances, by the nearest-neighbour chain: F. Murtagh, A survey of recent advances in
// hierarchical clustering algorithms, The Computer Journal 26 (1983); the order and numbers of its steps as in
// D. Müllner, Modern hierarchical, agglomerative clustering algorithms, arXiv:1109.2378 (2011). It takes quadratic
// time, and no memory of that size besides the table. Tested by linkage_test.cpp, and against R's hclust by
// tests/job/test_families.py.

namespace varnolix::job {

/// How far two groups are apart: the mean of the distances of their members, the greatest or the least.
enum class Linkage : std::uint8_t { average, complete, single };

const char* linkageName(Linkage linkage);
/// @param name one that linkageName() gives
Linkage linkageOf(std::string_view name);

/// A step of the tree, as R's hclust has it: a negative number is that of a motif, -(place + 1), a positive one that of
/// an earlier step, counted from 1. Motifs come first, then steps, each by their places.
struct TreeMerge {
    int left = 0;
    int right = 0;
    double height = 0.0;
};

/// Lets the lesser motif, or else the motif before the step, or else the earlier step be the left one.
TreeMerge orderedMerge(int one, int other, double height);

/// The steps by ascending height; no step is lower than those below it. Of equal distances the one of the earlier
/// places counts first.
/// @param distances of all pairs, in the order of pairCell(); overwritten
/// @param sizes how many equal members each place stands for
std::vector<TreeMerge> treeOf(std::vector<double>& distances, std::span<const std::size_t> sizes, Linkage linkage);

/// The motifs from left to right, for a tree of so many.
std::vector<std::size_t> leavesOf(std::span<const TreeMerge> merges, std::size_t motifs);

}  // namespace varnolix::job
