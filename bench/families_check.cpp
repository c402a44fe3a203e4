// Plants families of motifs and looks how well they are found again. Prints four tables:
//
//   1. the default by noise and length: adjusted Rand index, and how far common motifs and members are from the planted
//      motif
//   2. functions of the p-values and linkages, each at the cut that is best for it over all the sets
//   3. the default function by linkage and cut
//   4. for a file of real motifs: how many versions of one matrix, with the same id up to the last dot, get together
//
// families_check [FILE]: a motif file for the fourth table, in any layout. Needs some minutes. The seeds are fixed.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "input/input_block.h"
#include "job/downloads/download.h"
#include "job/families/families.h"
#include "job/families/pair_alignment.h"
#include "job/significance/significance.h"

namespace varnolix::bench {

namespace {

constexpr std::size_t motifsOfSet = 400;

/// What a set is like.
struct Kind {
    const char* name;
    std::size_t leastSites, mostSites;
    std::size_t leastLength, mostLength;
    std::size_t mostCut;  ///< columns that a member lacks at either end
    bool hasFlanks;       ///< whether it has as many others there
};

constexpr Kind kinds[] = {
    {"8-15 sites, 6-20 columns", 8, 15, 6, 20, 3, false},
    {"16-30 sites, 6-20 columns", 16, 30, 6, 20, 3, false},
    {"31-60 sites, 6-20 columns", 31, 60, 6, 20, 3, false},
    {"8-60 sites, 6-9 columns, flanks", 8, 60, 6, 9, 2, true},
    {"8-60 sites, 10-14 columns, flanks", 8, 60, 10, 14, 3, true},
    {"8-60 sites, 15-24 columns, flanks", 8, 60, 15, 24, 5, true},
    {"8-15 sites, 6-20 columns, flanks", 8, 15, 6, 20, 3, true},
};

struct MotifSet {
    std::vector<data> motifs;
    std::vector<double> sites;
    std::vector<std::size_t> truth;  ///< the family of each motif
    std::vector<Matrix> sources;     ///< of each family
};

class Planter {
  public:
    Planter(const Kind& kind, std::uint64_t seed) : kind_(kind), random_(seed) {}

    MotifSet plant() {
        MotifSet set;
        while (set.motifs.size() < motifsOfSet) {
            const Matrix source = columns(uniform(kind_.leastLength, kind_.mostLength), false);
            const std::size_t members = uniform(0, 1) == 0 ? 1 : uniform(2, 20);
            for (std::size_t n = 0; n < members && set.motifs.size() < motifsOfSet; ++n) {
                set.truth.push_back(set.sources.size());
                const std::size_t sites = uniform(kind_.leastSites, kind_.mostSites);
                set.sites.push_back(static_cast<double>(sites));
                data& motif = set.motifs.emplace_back();
                motif.matrixID = static_cast<int>(set.motifs.size());
                motif.matrix = counted(member(source), sites);
            }
            set.sources.push_back(source);
        }
        return set;
    }

  private:
    std::size_t uniform(std::size_t least, std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(least, most)(random_);
    }

    /// Sharp, mixed and flat columns, or those of flanks, which are flat.
    Matrix columns(std::size_t count, bool isFlank) {
        Matrix result(count);
        for (Column& column : result) {
            constexpr double shapes[] = {0.05, 0.15, 0.4};
            std::gamma_distribution<double> weight(isFlank ? 2.0 : shapes[uniform(0, 2)]);
            for (double& value : column) value = weight(random_) + 1e-3;
            column = frequencies(column);
        }
        return result;
    }

    Matrix member(const Matrix& source) {
        constexpr std::size_t leastLeft = 6;
        const std::size_t most = std::min(kind_.mostCut, (source.size() - leastLeft) / 2);
        Matrix result;
        if (kind_.hasFlanks) result = columns(uniform(0, kind_.mostCut), true);
        result.insert(result.end(), source.begin() + static_cast<std::ptrdiff_t>(uniform(0, most)),
                      source.end() - static_cast<std::ptrdiff_t>(uniform(0, most)));
        if (kind_.hasFlanks) {
            const Matrix flank = columns(uniform(0, kind_.mostCut), true);
            result.insert(result.end(), flank.begin(), flank.end());
        }
        return uniform(0, 1) == 0 ? result : job::oppositeStrand(result);
    }

    Matrix counted(const Matrix& source, std::size_t sites) {
        Matrix result;
        for (const Column& column : source) {
            std::discrete_distribution<std::size_t> base(column.begin(), column.end());
            Column counts{};
            for (std::size_t site = 0; site < sites; ++site) counts[base(random_)] += 1.0;
            result.push_back(frequencies(counts));
        }
        return result;
    }

    const Kind& kind_;
    std::mt19937_64 random_;
};

/// What is known of a pair: p-values and similarities of both directions, and the p-values of equal targets.
struct PairTable {
    std::vector<double> pValues, similarities;  // by query and target
    std::vector<double> equal;
};

PairTable pairTableOf(const std::vector<data>& motifs) {
    const std::size_t count = motifs.size();
    PairTable table{std::vector<double>(count * count, 1.0), std::vector<double>(count * count, 0.0),
                    std::vector<double>(count, 1.0)};
    const job::ColumnPool pool(motifs);
    std::vector<job::QueryRequest> requests(count);
    for (std::size_t n = 0; n < count; ++n) requests[n] = {&motifs[n].matrix, n, {}};
    job::significanceOf(requests, pool, 0, fastestKernelCode(), [&](std::size_t query, const job::QueryMatches& found) {
        table.equal[query] = found.equalTarget;
        for (const job::SignificantMatch& match : found.matches) {
            table.pValues[query * count + match.target] = match.pair.pValue;
            table.similarities[query * count + match.target] = match.similarity;
        }
    });
    return table;
}

/// One pair, from both sides.
struct Sides {
    double p, otherP, equal, otherEqual, similarity;
};

struct DistanceFunction {
    const char* name;
    double (*of)(const Sides&);
};

constexpr DistanceFunction functions[] = {
    {"mean of tenth roots of p", [](const Sides& s) { return job::distancePart(s.p) + job::distancePart(s.otherP); }},
    {"tenth root of the greater p", [](const Sides& s) { return std::pow(std::max(s.p, s.otherP), 0.1); }},
    {"mean of fifth roots of p", [](const Sides& s) { return (std::pow(s.p, 0.2) + std::pow(s.otherP, 0.2)) / 2; }},
    {"mean of p", [](const Sides& s) { return (s.p + s.otherP) / 2; }},
    {"1 + mean log10 p / 280", [](const Sides& s) { return 1 + (std::log10(s.p) + std::log10(s.otherP)) / 560; }},
    {"1 - log p / log p of equal ones",
     [](const Sides& s) {
         return std::max(0.0, 1 - (std::log(s.p) + std::log(s.otherP)) / (std::log(s.equal) + std::log(s.otherEqual)));
     }},
    {"1 - similarity", [](const Sides& s) { return 1 - s.similarity; }},
};

std::vector<double> distancesOf(const PairTable& table, const DistanceFunction& function) {
    const std::size_t count = table.equal.size();
    std::vector<double> distances(pairsOf(count));
    for (std::size_t a = 1; a < count; ++a) {
        for (std::size_t b = 0; b < a; ++b) {
            distances[pairCell(a, b)] =
                function.of({table.pValues[a * count + b], table.pValues[b * count + a], table.equal[a], table.equal[b],
                             (table.similarities[a * count + b] + table.similarities[b * count + a]) / 2});
        }
    }
    return distances;
}

/// For each motif the number of its group, if the tree is cut there.
std::vector<std::size_t> groupsAt(const std::vector<job::TreeMerge>& merges, std::size_t motifs, double cut) {
    std::vector<std::size_t> groups(motifs);
    std::iota(groups.begin(), groups.end(), std::size_t{0});
    std::vector<std::vector<std::size_t>> below(merges.size());
    for (std::size_t n = 0; n < merges.size() && merges[n].height <= cut; ++n) {
        for (const int side : {merges[n].left, merges[n].right}) {
            if (side < 0) {
                below[n].push_back(static_cast<std::size_t>(-side - 1));
            } else {
                std::vector<std::size_t>& from = below[static_cast<std::size_t>(side - 1)];
                below[n].insert(below[n].end(), from.begin(), from.end());
                from.clear();
            }
        }
        for (const std::size_t motif : below[n]) groups[motif] = below[n].front();
    }
    return groups;
}

/// By L. Hubert and P. Arabie, Comparing partitions, Journal of Classification 2 (1985).
double adjustedRand(const std::vector<std::size_t>& one, const std::vector<std::size_t>& other) {
    std::map<std::pair<std::size_t, std::size_t>, std::size_t> both;
    std::map<std::size_t, std::size_t> ofOne, ofOther;
    for (std::size_t n = 0; n < one.size(); ++n) {
        ++both[{one[n], other[n]}];
        ++ofOne[one[n]];
        ++ofOther[other[n]];
    }
    const auto pairs = [](const auto& counts) {
        double sum = 0.0;
        for (const auto& [key, count] : counts) sum += static_cast<double>(pairsOf(count));
        return sum;
    };
    const double expected = pairs(ofOne) * pairs(ofOther) / static_cast<double>(pairsOf(one.size()));
    return (pairs(both) - expected) / ((pairs(ofOne) + pairs(ofOther)) / 2 - expected);
}

std::vector<std::size_t> groupsOf(const job::Families& families, std::size_t motifs) {
    std::vector<std::size_t> groups(motifs);
    for (std::size_t n = 0; n < families.families.size(); ++n) {
        for (const job::FamilyMember& member : families.families[n].members) groups[member.motif] = n;
    }
    return groups;
}

/// The common motif with the members weighed by their sites.
Matrix weighedBySites(const job::Family& family, const MotifSet& set) {
    Matrix sums(family.commonMotif.size());
    for (const job::FamilyMember& member : family.members) {
        const Matrix& matrix = set.motifs[member.motif].matrix;
        const Matrix strand = member.isReversed ? job::oppositeStrand(matrix) : matrix;
        for (std::size_t k = 0; k < sums.size(); ++k) {
            const auto place = static_cast<std::ptrdiff_t>(k) - member.offset;
            if (place < 0 || place >= static_cast<std::ptrdiff_t>(strand.size())) continue;
            for (std::size_t base = 0; base < 4; ++base) {
                sums[k][base] += set.sites[member.motif] * strand[static_cast<std::size_t>(place)][base];
            }
        }
    }
    for (Column& column : sums) column = frequencies(column);
    return sums;
}

void checkDefault(const std::vector<MotifSet>& sets) {
    std::printf("1. The default by noise and length, %zu motifs each\n", motifsOfSet);
    std::printf("%-36s %8s %8s %7s | %s\n", "set", "planted", "families", "Rand",
                "distance to the planted motif: common  by sites  members   common nearer");
    for (std::size_t n = 0; n < sets.size(); ++n) {
        const MotifSet& set = sets[n];
        const job::Families families = job::familiesOf(set.motifs, job::FamilySettings{});
        const job::ColumnPool pool(set.motifs);
        double common = 0.0;
        double bySites = 0.0;
        double members = 0.0;
        std::size_t counted = 0;
        std::size_t nearer = 0;
        for (const job::Family& family : families.families) {
            std::set<std::size_t> planted;
            for (const job::FamilyMember& member : family.members) planted.insert(set.truth[member.motif]);
            if (planted.size() > 1 || family.members.size() < 2) continue;
            const job::WindowChances source(set.sources[*planted.begin()], pool, nullptr);
            const auto toSource = [&](const Matrix& matrix) {
                return job::alignmentOf(source, {matrix, pool, nullptr}).distance;
            };
            double sum = 0.0;
            for (const job::FamilyMember& member : family.members) sum += toSource(set.motifs[member.motif].matrix);
            const double mean = sum / static_cast<double>(family.members.size());
            const double distance = toSource(family.commonMotif);
            common += distance;
            bySites += toSource(weighedBySites(family, set));
            members += mean;
            nearer += distance < mean ? 1 : 0;
            ++counted;
        }
        const auto all = static_cast<double>(counted);
        std::printf("%-36s %8zu %8zu %7.3f | %37.4f %9.4f %8.4f   %zu of %zu\n", kinds[n].name, set.sources.size(),
                    families.families.size(), adjustedRand(groupsOf(families, set.motifs.size()), set.truth),
                    common / all, bySites / all, members / all, nearer, counted);
    }
}

constexpr job::Linkage linkages[] = {job::Linkage::average, job::Linkage::complete, job::Linkage::single};

using Trees = std::vector<std::vector<job::TreeMerge>>;

Trees treesOf(const std::vector<PairTable>& tables, const DistanceFunction& function, job::Linkage linkage) {
    Trees trees;
    for (const PairTable& table : tables) {
        std::vector<double> distances = distancesOf(table, function);
        trees.push_back(job::treeOf(distances, std::vector<std::size_t>(table.equal.size(), 1), linkage));
    }
    return trees;
}

struct Score {
    double mean = 0.0;
    double least = 1.0;
};

Score scoreAt(const Trees& trees, const std::vector<MotifSet>& sets, double cut) {
    Score score;
    for (std::size_t n = 0; n < sets.size(); ++n) {
        const double index = adjustedRand(groupsAt(trees[n], sets[n].motifs.size(), cut), sets[n].truth);
        score.mean += index / static_cast<double>(sets.size());
        score.least = std::min(score.least, index);
    }
    return score;
}

void checkFunctions(const std::vector<MotifSet>& sets, const std::vector<PairTable>& tables) {
    std::printf("\n2. Functions and linkages, each at its best cut: adjusted Rand index over the sets\n");
    std::printf("%-34s %-9s %8s %7s %7s\n", "function", "linkage", "cut", "mean", "least");
    for (const DistanceFunction& function : functions) {
        for (const job::Linkage linkage : linkages) {
            const Trees trees = treesOf(tables, function, linkage);
            std::vector<double> heights;
            for (const auto& tree : trees) {
                for (const job::TreeMerge& merge : tree) heights.push_back(merge.height);
            }
            std::sort(heights.begin(), heights.end());
            Score best{-1.0, 0.0};
            double bestCut = 0.0;
            constexpr std::size_t tried = 200;
            for (std::size_t n = 1; n < tried; ++n) {
                const double cut = heights[n * heights.size() / tried];
                const Score score = scoreAt(trees, sets, cut);
                if (score.mean > best.mean) {
                    best = score;
                    bestCut = cut;
                }
            }
            std::printf("%-34s %-9s %8.4f %7.3f %7.3f\n", function.name, job::linkageName(linkage), bestCut, best.mean,
                        best.least);
        }
    }
}

void checkCuts(const std::vector<MotifSet>& sets, const std::vector<PairTable>& tables) {
    std::printf("\n3. The default function by linkage and cut: mean and least adjusted Rand index\n%6s", "cut");
    std::vector<Trees> trees;
    for (const job::Linkage linkage : linkages) {
        trees.push_back(treesOf(tables, functions[0], linkage));
        std::printf(" %15s", job::linkageName(linkage));
    }
    std::printf("\n");
    for (int percent = 20; percent <= 75; percent += 5) {
        std::printf("%6.2f", percent / 100.0);
        for (const Trees& some : trees) {
            const Score score = scoreAt(some, sets, percent / 100.0);
            std::printf("     %.3f %.3f", score.mean, score.least);
        }
        std::printf("\n");
    }
}

struct RealMotifs {
    std::vector<data> motifs;
    std::vector<std::string> bases, names;
};

RealMotifs readMotifs(const char* path) {
    std::ifstream file(path);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    RealMotifs real;
    for (const job::DownloadedMotif& downloaded : job::readDownload(text, "motifs").motifs) {
        data& motif = real.motifs.emplace_back();
        motif.matrixID = static_cast<int>(real.motifs.size());
        for (const job::NumberColumn& column : downloaded.columns) {
            Column values{};
            std::transform(column.begin(), column.end(), values.begin(), parseNumber);
            motif.matrix.push_back(frequencies(values));
        }
        real.bases.push_back(downloaded.id.substr(0, downloaded.id.rfind('.')));
        std::string name = downloaded.name;
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::toupper(c); });
        real.names.push_back(name);
    }
    return real;
}

void checkReal(const char* path) {
    const RealMotifs real = readMotifs(path);
    const std::size_t count = real.motifs.size();
    std::printf("\n4. %zu real motifs: pairs of versions that get together, and pairs of other ids and names that do\n",
                count);
    std::printf("%-34s %-9s %8s %8s %8s %9s %10s\n", "function", "linkage", "cut", "families", "largest", "versions",
                "strangers");
    const std::vector<PairTable> tables = {pairTableOf(real.motifs)};
    const auto line = [&](const DistanceFunction& function, job::Linkage linkage, const std::vector<double>& cuts) {
        const std::vector<job::TreeMerge> tree = treesOf(tables, function, linkage).front();
        for (const double cut : cuts) {
            const std::vector<std::size_t> groups = groupsAt(tree, count, cut);
            std::map<std::size_t, std::size_t> sizes;
            std::size_t versions = 0, together = 0, strangers = 0, largest = 0;
            for (std::size_t a = 0; a < count; ++a) {
                largest = std::max(largest, ++sizes[groups[a]]);
                for (std::size_t b = 0; b < a; ++b) {
                    const bool isVersion = real.bases[a] == real.bases[b];
                    versions += isVersion ? 1 : 0;
                    if (groups[a] != groups[b]) continue;
                    together += isVersion ? 1 : 0;
                    strangers += isVersion || real.names[a] == real.names[b] ? 0 : 1;
                }
            }
            std::printf("%-34s %-9s %8.3f %8zu %8zu %4zu of %zu %8zu\n", function.name, job::linkageName(linkage), cut,
                        sizes.size(), largest, together, versions, strangers);
        }
    };
    line(functions[0], job::Linkage::average, {0.2, 0.3, 0.35, 0.4, 0.45, 0.5, 0.55, 0.6});
    line(functions[0], job::Linkage::complete, {0.4, 0.5, 0.6, 0.7, 0.8});
    line(functions[0], job::Linkage::single, {0.1, 0.15, 0.2, 0.25, 0.3});
    line(functions[1], job::Linkage::average, {0.4, 0.45, 0.5, 0.55});
    line(functions[2], job::Linkage::average, {0.15, 0.2, 0.25, 0.3});
    line(functions[3], job::Linkage::average, {0.001, 0.01, 0.03});
    line(functions[5], job::Linkage::average, {0.8, 0.9, 0.95, 0.98});
    line(functions[6], job::Linkage::average, {0.08, 0.1, 0.12, 0.14});
}

}  // namespace

}  // namespace varnolix::bench

int main(int argc, char** argv) {
    using namespace varnolix::bench;
    std::vector<MotifSet> sets;
    std::vector<PairTable> tables;
    for (std::size_t n = 0; n < std::size(kinds); ++n) {
        sets.push_back(Planter(kinds[n], 20260200 + n).plant());
        tables.push_back(pairTableOf(sets.back().motifs));
    }
    checkDefault(sets);
    checkFunctions(sets, tables);
    checkCuts(sets, tables);
    if (argc > 1) checkReal(argv[1]);
    return 0;
}
