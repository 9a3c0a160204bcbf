#pragma once

#include <QString>
#include <QStringList>

namespace zentro {

/// What the calculator writes for a number: "Converting: " and the number, then what it is in the
/// other base. Digits alone can be decimal or hexadecimal and are converted both ways; with a
/// letter A to F or with "0x" in front the number is hexadecimal, with a sign decimal. A number
/// holds 32 bits: -2147483648 to 4294967295; one below 0 is given as its two's complement.
QStringList ConvertNumber(const QString& number);

}  // namespace zentro
