#include "job/families/linkage.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

#include "run/shared_records.h"

namespace varnolix::job {

namespace {

constexpr std::pair<Linkage, const char*> names[] = {
    {Linkage::average, "average"}, {Linkage::complete, "complete"}, {Linkage::single, "single"}};

/// Two groups that were joined, by the places of members that stand for them.
struct Joined {
    std::size_t one;
    std::size_t other;
    double height;
};

/// The distance of a third group from two that are joined. It lies between theirs in spite of all rounding: so no step
/// gets lower than those below it, and equal distances stay equal.
double joinedDistance(Linkage linkage, double one, double other, double size, double otherSize) {
    const auto [least, greatest] = std::minmax(one, other);
    if (linkage == Linkage::single) return least;
    if (linkage == Linkage::complete) return greatest;
    return std::clamp((size * one + otherSize * other) / (size + otherSize), least, greatest);
}

/// The groups that are left, with their distances.
class Chain {
  public:
    Chain(std::vector<double>& distances, std::span<const std::size_t> sizes, Linkage linkage)
        : distances_(distances), sizes_(sizes.begin(), sizes.end()), linkage_(linkage), groups_(sizes.size()) {
        std::iota(groups_.begin(), groups_.end(), std::size_t{0});
    }

    std::vector<Joined> join() {
        std::vector<Joined> steps;
        std::vector<std::size_t> chain;
        while (groups_.size() > 1) {
            if (chain.empty()) chain.push_back(groups_.front());
            const std::size_t last = chain.back();
            const std::size_t before = chain.size() > 1 ? chain[chain.size() - 2] : last;
            const std::size_t next = nearest(last, before);
            if (next != before) {
                chain.push_back(next);
                continue;
            }
            chain.resize(chain.size() - 2);
            steps.push_back({std::min(last, next), std::max(last, next), distances_[pairCell(last, next)]});
            merge(steps.back());
        }
        return steps;
    }

  private:
    /// The nearest group; of equally near ones the one before in the chain, so that it ends, or else the first.
    std::size_t nearest(std::size_t group, std::size_t before) const {
        std::size_t found = before;
        double least = before == group ? std::numeric_limits<double>::infinity() : distances_[pairCell(group, before)];
        for (const std::size_t other : groups_) {
            if (other == group) continue;
            const double distance = distances_[pairCell(group, other)];
            if (distance < least || found == group) {
                least = distance;
                found = other;
            }
        }
        return found;
    }

    /// The earlier place stands for both from now on.
    void merge(const Joined& step) {
        groups_.erase(std::lower_bound(groups_.begin(), groups_.end(), step.other));
        const auto size = static_cast<double>(sizes_[step.one]);
        const auto otherSize = static_cast<double>(sizes_[step.other]);
        for (const std::size_t third : groups_) {
            if (third == step.one) continue;
            double& distance = distances_[pairCell(step.one, third)];
            distance = joinedDistance(linkage_, distance, distances_[pairCell(step.other, third)], size, otherSize);
        }
        sizes_[step.one] += sizes_[step.other];
    }

    std::vector<double>& distances_;
    std::vector<std::size_t> sizes_;
    Linkage linkage_;
    std::vector<std::size_t> groups_;  // ascending
};

}  // namespace

const char* linkageName(Linkage linkage) {
    return std::ranges::find(names, linkage, &std::pair<Linkage, const char*>::first)->second;
}

Linkage linkageOf(std::string_view name) {
    return std::ranges::find(names, name, [](const auto& entry) { return std::string_view(entry.second); })->first;
}

TreeMerge orderedMerge(int one, int other, double height) {
    const bool isSwapped = one < 0 && other < 0 ? one < other : one > other;
    return isSwapped ? TreeMerge{other, one, height} : TreeMerge{one, other, height};
}

std::vector<TreeMerge> treeOf(std::vector<double>& distances, std::span<const std::size_t> sizes, Linkage linkage) {
    std::vector<Joined> steps = Chain(distances, sizes, linkage).join();
    std::stable_sort(steps.begin(), steps.end(),
                     [](const Joined& one, const Joined& other) { return one.height < other.height; });
    // For each place the one that stands for its group, with the number of the group.
    std::vector<std::size_t> standsFor(sizes.size());
    std::iota(standsFor.begin(), standsFor.end(), std::size_t{0});
    const auto groupOf = [&](std::size_t place) {
        while (standsFor[place] != place) place = standsFor[place] = standsFor[standsFor[place]];
        return place;
    };
    std::vector<int> numbers(sizes.size());
    for (std::size_t place = 0; place < numbers.size(); ++place) numbers[place] = -static_cast<int>(place) - 1;
    std::vector<TreeMerge> merges;
    for (const Joined& step : steps) {
        const std::size_t one = groupOf(step.one);
        const std::size_t other = groupOf(step.other);
        merges.push_back(orderedMerge(numbers[one], numbers[other], step.height));
        standsFor[std::max(one, other)] = std::min(one, other);
        numbers[std::min(one, other)] = static_cast<int>(merges.size());
    }
    return merges;
}

std::vector<std::size_t> leavesOf(std::span<const TreeMerge> merges, std::size_t motifs) {
    std::vector<std::size_t> leaves;
    leaves.reserve(motifs);
    std::vector<int> open;
    if (motifs > 0) open.push_back(merges.empty() ? -1 : static_cast<int>(merges.size()));
    while (!open.empty()) {
        const int node = open.back();
        open.pop_back();
        if (node < 0) {
            leaves.push_back(static_cast<std::size_t>(-node - 1));
            continue;
        }
        const TreeMerge& merge = merges[static_cast<std::size_t>(node - 1)];
        open.push_back(merge.right);
        open.push_back(merge.left);
    }
    return leaves;
}

}  // namespace varnolix::job
