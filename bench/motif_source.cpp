#include "motif_source.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include "input/input_block.h"

namespace varnolix::bench {

namespace {

constexpr std::size_t leastLength = 6;
constexpr std::size_t mostLength = 24;
constexpr std::size_t mostShift = 3;
constexpr std::uint32_t seed = 20240229;

class MotifSource {
  public:
    std::vector<Matrix> counts(std::size_t motifs) {
        std::vector<Matrix> result;
        while (result.size() < motifs) {
            const Matrix ancestor = probabilities(uniform(leastLength, mostLength));
            const std::size_t kin = chance(0.5) ? 1 : uniform(2, 10);
            for (std::size_t n = 0; n < kin && result.size() < motifs; ++n) {
                result.push_back(counted(kin == 1 ? ancestor : relative(ancestor)));
            }
        }
        std::shuffle(result.begin(), result.end(), random_);
        return result;
    }

  private:
    std::size_t uniform(std::size_t least, std::size_t most) {
        return std::uniform_int_distribution<std::size_t>(least, most)(random_);
    }

    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }

    /// Sharp, mixed and flat columns, depending on the shape of the gamma distribution.
    Matrix probabilities(std::size_t length) {
        Matrix result(length);
        for (Column& column : result) {
            constexpr std::array<double, 3> shapes = {0.05, 0.15, 0.4};
            std::gamma_distribution<double> weight(shapes[uniform(0, 2)]);
            for (double& value : column) value = weight(random_) + 1e-3;
            column = frequencies(column);
        }
        return result;
    }

    /// A part of the ancestor after some random columns, on either strand.
    Matrix relative(const Matrix& ancestor) {
        const std::size_t cut = uniform(0, std::min(mostShift, ancestor.size() - leastLength));
        const std::size_t added = uniform(0, std::min(mostShift, mostLength - ancestor.size()));
        Matrix result = probabilities(added);
        result.insert(result.end(), ancestor.begin() + static_cast<std::ptrdiff_t>(cut), ancestor.end());
        if (chance(0.5)) {
            std::reverse(result.begin(), result.end());
            for (Column& column : result) std::reverse(column.begin(), column.end());
        }
        return result;
    }

    /// Counts of bases drawn at a small number of sites.
    Matrix counted(const Matrix& source) {
        const std::size_t sites = uniform(8, 60);
        Matrix result;
        for (const Column& column : source) {
            std::discrete_distribution<std::size_t> base(column.begin(), column.end());
            Column counts{};
            for (std::size_t site = 0; site < sites; ++site) counts[base(random_)] += 1.0;
            result.push_back(counts);
        }
        return result;
    }

    std::mt19937 random_{seed};
};

}  // namespace

std::vector<Matrix> countMatrices(std::size_t motifs) {
    return MotifSource().counts(motifs);
}

std::vector<data> motifsOfCounts(std::span<const Matrix> counts) {
    std::vector<data> motifs;
    for (const Matrix& matrix : counts) {
        data motif;
        motif.motifNum = motif.matrixID = static_cast<int>(motifs.size()) + 1;
        motif.motifName = "m" + std::to_string(motif.matrixID);
        motif.datasetNum = 1;
        for (const Column& column : matrix) motif.matrix.push_back(frequencies(column));
        deriveForms(motif);
        motifs.push_back(motif);
    }
    return motifs;
}

void writeJaspar(std::ostream& stream, std::span<const Matrix> counts, std::size_t firstNumber) {
    for (const Matrix& matrix : counts) {
        stream << ">m" << firstNumber++ << '\n';
        for (std::size_t base = 0; base < 4; ++base) {
            stream << std::string_view("ACGT")[base] << " [";
            for (const Column& column : matrix) stream << ' ' << static_cast<int>(column[base]);
            stream << " ]\n";
        }
        stream << '\n';
    }
}

}  // namespace varnolix::bench
