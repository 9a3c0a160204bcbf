#include "world/arithmetic.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

namespace zentro::world {

static_assert(std::numeric_limits<double>::is_iec559);
static_assert(FLT_EVAL_METHOD == 0, "intermediate results must be doubles, too");

double Unwound(double angle) {
    return angle - 2 * kPi * std::floor(angle / (2 * kPi) + 0.5);
}

double Sine(double angle) {
    double x = Unwound(angle);
    if (x > kPi / 2) x = kPi - x;
    if (x < -kPi / 2) x = -kPi - x;
    // Its series: x - x^3/3! + x^5/5! ... as far as a double can tell, the smallest term first.
    constexpr int kLastPower = 21;
    double sum = 1;
    for (int power = kLastPower; power > 1; power -= 2) {
        sum = 1 - x * x / (power * (power - 1)) * sum;
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
