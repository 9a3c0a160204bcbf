#include "ui/dialogs/number_conversion.h"

#include <QRegularExpression>
#include <algorithm>
#include <cstdint>
#include <limits>

namespace zentro {

namespace {

constexpr auto kTooBig = " Number too Big for Hex";
constexpr auto kCannotConvert = "Sorry - can't convert";

bool IsWhole(const QString& text, const char* pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

bool IsZero(const QString& digits) {
    return std::ranges::all_of(digits, [](QChar digit) { return digit == '0'; });
}

QString DecimalToHex(const QString& number) {
    bool fits = false;
    const qint64 value = number.toLongLong(&fits);
    fits = fits && value >= std::numeric_limits<std::int32_t>::min() &&
           value <= std::numeric_limits<std::uint32_t>::max();
    if (!fits) return number + kTooBig;
    return QString::number(static_cast<std::uint32_t>(value), 16).toUpper();
}

QString HexToDecimal(const QString& digits) {
    bool fits = false;
    const std::uint32_t value = digits.toUInt(&fits, 16);
    return fits ? QString::number(value) : QString(kCannotConvert);
}

}  // namespace

QStringList ConvertNumber(const QString& number) {
    const QString text = number.trimmed();
    const QString hexDigits = text.startsWith("0x", Qt::CaseInsensitive) ? text.mid(2) : text;
    const bool decimal = IsWhole(text, "[+-]?[0-9]+");
    const bool hexadecimal = IsWhole(hexDigits, "[0-9A-Fa-f]+");

    QStringList lines{"Converting: " + text};
    if (!decimal && !hexadecimal) return lines << kCannotConvert;
    if (IsZero(decimal ? QString(text).remove('+').remove('-') : hexDigits))
        return lines << "Zero is Zero in all bases";
    if (decimal) lines << "Dec to Hex: " + DecimalToHex(text);
    if (hexadecimal) lines << "Hex to Dec: " + HexToDecimal(hexDigits);
    return lines;
}

}  // namespace zentro
