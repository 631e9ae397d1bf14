#include "recording/numbertext.h"

#include <charconv>
#include <cmath>

namespace rec {

QByteArray numberText(double number) {
    if (!std::isfinite(number))
        return "null";
    constexpr double kExactIntegers = 1e15;
    char buffer[64];
    const bool plain = std::abs(number) < kExactIntegers && number == std::trunc(number);
    const std::to_chars_result end =
        plain ? std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed)
              : std::to_chars(buffer, buffer + sizeof buffer, number);
    return QByteArray(buffer, int(end.ptr - buffer));
}

}  // namespace rec
