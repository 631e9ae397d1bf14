#pragma once

#include "conform/check.h"

#include <QString>

#include <vector>

namespace conform {

/// Times of one kind that were measured.
struct Figure {
    QString name;
    std::vector<double> ms;
};

/// Measures what the backend allows. The arm is at the start.
std::vector<Figure> measure(const Subject& subject);

/// "command to motion: min 2.1, p50 2.4, p99 6.0, worst 6.0 ms (20)".
QString figureText(const Figure& figure);

}  // namespace conform
