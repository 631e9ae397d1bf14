#include "look/contrast.h"

#include <QtMath>

#include <algorithm>

namespace look {

namespace {

/// https://www.w3.org/TR/WCAG21/#dfn-relative-luminance
double luminance(QRgb colour) {
    const auto linear = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.03928 ? share / 12.92 : qPow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

}  // namespace

double contrast(QRgb one, QRgb other) {
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

}  // namespace look
