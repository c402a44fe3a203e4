#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace varnolix::testing {

/// Numbers whose printed forms are unusual.
inline std::vector<double> nastyNumbers() {
    using Limits = std::numeric_limits<double>;
    std::vector<double> numbers = {0.0,
                                   1.0,
                                   0.5,
                                   1e-5,
                                   9.9999949999e-5,
                                   0.0001,
                                   0.00009999995,
                                   999999.0,
                                   999999.4,
                                   999999.5,
                                   999999.9999995,
                                   1e6,
                                   0.1 + 0.2,
                                   1.0 / 3.0,
                                   2.0 / 3.0,
                                   0.9999995,
                                   0.99999949999,
                                   0.0000005,
                                   0.00000049999,
                                   0.0000015,
                                   0.0000025,
                                   0.1234565,
                                   0.5 + 0x1p-21,
                                   1e15,
                                   1e16,
                                   1e17,
                                   1e22,
                                   1e300,
                                   123456.5,
                                   1234565.0,
                                   Limits::max(),
                                   Limits::min(),
                                   Limits::denorm_min(),
                                   Limits::epsilon(),
                                   Limits::infinity(),
                                   Limits::quiet_NaN()};
    const std::size_t count = numbers.size();
    for (std::size_t place = 0; place < count; ++place) numbers.push_back(std::copysign(numbers[place], -1.0));
    return numbers;
}

/// Numbers of several kinds in turn: random bits, fractions of 1, tenths and halves of the sixth decimal, large counts.
class RandomNumbers {
  public:
    explicit RandomNumbers(std::uint64_t seed) : engine_(seed) {}

    double next() {
        const std::uint64_t bits = engine_();
        switch (kind_++ % 4) {
            case 0:
                return std::bit_cast<double>(bits);
            case 1:
                return static_cast<double>(bits >> 11U) * 0x1p-53;
            case 2:
                return static_cast<double>(bits % 40'000'000) * 0.5e-6;
            default:
                return static_cast<double>(bits % 20'000'000) * 0.5;
        }
    }

  private:
    std::mt19937_64 engine_;
    unsigned kind_ = 0;
};

}  // namespace varnolix::testing
