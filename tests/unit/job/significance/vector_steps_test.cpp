#include "job/significance/vector_steps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace varnolix::job {
namespace {

class VectorStepsTest : public ::testing::TestWithParam<KernelCode> {
  protected:
    const VectorSteps steps_ = vectorSteps(GetParam());
    std::mt19937 random_{7};

    /// Four rows of values in quarters, so that all sums are exact.
    std::vector<float> quarters(std::size_t stride) {
        std::vector<float> rows(4 * stride);
        for (float& value : rows) value = 0.25F * static_cast<float>(random_() % 5);
        return rows;
    }

    static Column columnAt(const std::vector<float>& rows, std::size_t stride, std::size_t place) {
        return {rows[place], rows[stride + place], rows[2 * stride + place], rows[3 * stride + place]};
    }

    static double distance(const Column& one, const Column& other) {
        double sum = 0.0;
        for (std::size_t base = 0; base < 4; ++base) sum += std::fabs(one[base] - other[base]);
        return sum;
    }
};

constexpr Column query = {0.5, 0.25, 0.0, 0.25};

TEST_P(VectorStepsTest, MeasuresBothFormsOfAColumn) {
    for (const std::size_t columns : {1U, 15U, 16U, 33U}) {
        const std::size_t stride = columns + elementsPastEnd;
        const std::vector<float> rows = quarters(stride);
        for (const bool swapsOnePair : {false, true}) {
            std::vector<std::int32_t> distances(2 * stride);
            steps_.measure(query, {rows.data(), stride}, columns, swapsOnePair, 8.0F, 11, distances.data());
            for (std::size_t n = 0; n < columns; ++n) {
                const auto [a, c, g, t] = columnAt(rows, stride, n);
                const Column first = swapsOnePair ? Column{t, c, g, a} : Column{a, c, g, t};
                const Column second = swapsOnePair ? Column{a, g, c, t} : Column{t, g, c, a};
                EXPECT_EQ(distances[n], std::min(11.0, 8.0 * distance(query, first)));
                EXPECT_EQ(distances[stride + n], std::min(11.0, 8.0 * distance(query, second)));
            }
        }
    }
}

TEST_P(VectorStepsTest, MeasuresFinelyWhereThereAreColumns) {
    constexpr std::size_t columns = 21;
    constexpr std::size_t stride = columns + elementsPastEnd;
    const std::vector<float> rows = quarters(stride);
    std::vector<float> weights(stride, 1.0F);
    weights[20] = 0.0F;
    std::vector<float> distances(stride);
    steps_.measureFinely(query, {rows.data(), stride}, weights.data(), columns, distances.data());
    for (std::size_t n = 0; n < 20; ++n) EXPECT_EQ(distances[n], distance(query, columnAt(rows, stride, n)));
    EXPECT_EQ(distances[20], 0.0F);
}

TEST_P(VectorStepsTest, AddsDiagonals) {
    constexpr std::size_t stride = 50;
    constexpr std::size_t rows = 5;
    constexpr std::size_t count = 19;
    std::vector<float> values(stride * rows + elementsPastEnd);
    for (float& value : values) value = static_cast<float>(random_() % 8);
    std::vector<float> sums(count + elementsPastEnd);
    steps_.addDiagonals(values.data(), stride, rows, count, sums.data());
    for (std::size_t n = 0; n < count; ++n) {
        float sum = 0.0F;
        for (std::size_t row = 0; row < rows; ++row) sum += values[row * stride + row + n];
        EXPECT_EQ(sums[n], sum);
    }
}

TEST_P(VectorStepsTest, Convolves) {
    std::vector<double> before(64 + convolvedAtOnce);
    for (double& value : before) value = static_cast<double>(random_() % 100) / 7.0;
    const std::array<DistanceShare, 3> shares = {{{2, 0.3}, {5, 0.1}, {31, 0.6}}};
    std::array<double, convolvedAtOnce> values{};
    steps_.convolve(before.data() + 32, shares.data(), shares.size(), values.data());
    for (std::size_t n = 0; n < convolvedAtOnce; ++n) {
        double sum = 0.0;
        for (const DistanceShare& share : shares) {
            sum += before[32 + n - static_cast<std::size_t>(share.step)] * share.share;
        }
        EXPECT_EQ(values[n], sum);
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, VectorStepsTest, ::testing::ValuesIn(kernelCodes()));

}  // namespace
}  // namespace varnolix::job
