#include "world/arithmetic.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <limits>

namespace zentro::world {

static_assert(std::numeric_limits<double>::is_iec559);
static_assert(FLT_EVAL_METHOD == 0, "intermediate results must be doubles, too");

namespace {

/// Of x - x^3/3! + x^5/5! ..., as far as a double can tell, the last one first.
constexpr std::array<double, 11> SineSeries() {
    std::array<double, 11> factors{};
    double factor = 1;
    for (int term = 0; term < 11; ++term) {
        factors[static_cast<std::size_t>(10 - term)] = factor;
        factor /= -(2.0 * term + 2) * (2.0 * term + 3);
    }
    return factors;
}
constexpr std::array<double, 11> kSineSeries = SineSeries();

}  // namespace

double Unwound(double angle) {
    return angle - 2 * kPi * std::floor(angle / (2 * kPi) + 0.5);
}

double Sine(double angle) {
    double x = Unwound(angle);
    if (x > kPi / 2) x = kPi - x;
    if (x < -kPi / 2) x = -kPi - x;
    double sum = 0;
    for (const double factor : kSineSeries) {
        sum = sum * (x * x) + factor;
    }
    return x * sum;
}

double Cosine(double angle) {
    return Sine(angle + kPi / 2);
}

double Radians(double degrees) {
    return degrees / 180 * kPi;
}

double Degrees(double radians) {
    return radians / kPi * 180;
}

std::uint8_t ToByte(double value) {
    return static_cast<std::uint8_t>(std::floor(std::clamp(value, 0.0, 255.0) + 0.5));
}

}  // namespace zentro::world
