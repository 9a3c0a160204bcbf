#pragma once

#include <cstdint>

namespace zentro::world {

// The same world gives the same bits on every machine. So this library adds, subtracts, multiplies,
// divides and takes square roots of doubles, which IEEE 754 rounds in one way only, never fuses two
// of them (its target says -ffp-contract=off), and has a sine of its own, since those of the C
// libraries differ. Arithmetic in its headers is static, so what
// another library makes of it stays there.

inline constexpr double kPi = 3.14159265358979323846;

/// Of an angle in radians, at most a few thousand turns away from 0.
double Sine(double angle);
double Cosine(double angle);

double Radians(double degrees);
double Degrees(double radians);

/// The same direction as an angle from -pi to pi.
double Unwound(double angle);

/// To the nearest whole number from 0 to 255.
std::uint8_t ToByte(double value);

}  // namespace zentro::world
