#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "support/run_fixture.h"

namespace varnolix::testing {

/// Random motifs of several kinds: coarse values with many equal scores, fine values, and the frequencies of IUPAC
/// letters. They have all the lengths that matter to the scans.
class RandomMotifs {
  public:
    explicit RandomMotifs(std::uint64_t seed) : engine_(seed) {}

    std::size_t pick(std::size_t below) { return static_cast<std::size_t>(engine_() % below); }

    Matrix matrix(std::size_t length) {
        const std::size_t kind = pick(3);
        Matrix result(length);
        for (Column& column : result) column = this->column(kind);
        return result;
    }

    /// `count` motifs, spread over `files` files, with ids from 1.
    std::vector<data> motifs(int count, int files) {
        std::vector<data> list;
        for (int id = 1; id <= count; ++id) {
            const std::size_t length = pick(12) == 0 ? pick(4) : 4 + pick(12);
            list.push_back(motifOfMatrix(id, matrix(length), 1 + (id - 1) * files / count));
        }
        return list;
    }

    Column column(std::size_t kind) {
        Column counts{};
        switch (kind) {
            case 0:  // quarters
                for (int quarter = 0; quarter < 4; ++quarter) counts[pick(4)] += 0.25;
                return counts;
            case 1: {  // one or two bases
                const std::size_t base = pick(4);
                counts[base] = 0.5;
                counts[pick(4)] += 0.5;
                return counts;
            }
            default:
                for (double& value : counts) value = static_cast<double>(1 + pick(1000));
                return frequencies(counts);
        }
    }

  private:
    std::mt19937_64 engine_;
};

}  // namespace varnolix::testing
