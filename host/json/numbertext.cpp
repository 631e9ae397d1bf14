#include "json/numbertext.h"

#include <charconv>
#include <cmath>

namespace mendo {

QByteArray numberText(double number) {
    if (!std::isfinite(number)) {
        return "null";
    }
    constexpr double exactIntegers = 1e15;
    char buffer[64];
    const bool plain = std::abs(number) < exactIntegers && number == std::trunc(number);
    const std::to_chars_result end =
        plain ? std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed)
              : std::to_chars(buffer, buffer + sizeof buffer, number);
    return QByteArray(buffer, int(end.ptr - buffer));
}

}  // namespace mendo
