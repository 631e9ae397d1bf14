#pragma once

#include <QByteArray>

namespace lumo {

/// A place in a text: line and column in characters, from 1; zeros for nowhere.
struct TextPlace {
    int line = 0;
    int column = 0;
};

/// Where the content begins, past a byte-order mark and space.
[[nodiscard]] TextPlace contentPlace(const QByteArray& json);

/// Where an element of the outermost array of a JSON text begins; nowhere when there is none at that
/// position. The text parses.
[[nodiscard]] TextPlace elementPlace(const QByteArray& json, int position);

}  // namespace lumo
