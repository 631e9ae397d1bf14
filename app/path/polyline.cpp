#include "app/path/polyline.h"

#include <algorithm>

namespace app {

double lengthOf(const Polyline& line) {
    double length = 0;
    for (size_t i = 1; i < line.size(); ++i) {
        length += distance(line[i], line[i - 1]);
    }
    return length;
}

Position along(const Polyline& line, double length) {
    double rest = std::max(length, 0.0);
    for (size_t i = 1; i < line.size(); ++i) {
        const double step = distance(line[i], line[i - 1]);
        if (rest < step) {
            return interpolated(line[i - 1], line[i], rest / step);
        }
        rest -= step;
    }
    return line.back();
}

Polyline cut(const Polyline& line, double from, double to) {
    Polyline part{along(line, from)};
    double length = 0;
    for (size_t i = 1; i < line.size(); ++i) {
        length += distance(line[i], line[i - 1]);
        if (length > from && length < to) {
            part.push_back(line[i]);
        }
    }
    part.push_back(along(line, to));
    return part;
}

Polyline roundedCorner(const Polyline& in, const Polyline& out, double radius) {
    constexpr int steps = 16;
    const double length = lengthOf(in);
    Polyline corner;
    for (int i = 0; i <= steps; ++i) {
        const double u = double(i) / steps;
        corner.push_back(interpolated(along(in, length - radius * (1 - u)), along(out, radius * u), u));
    }
    return corner;
}

}  // namespace app
