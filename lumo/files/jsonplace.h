#pragma once

#include "json/jsonfault.h"

#include <QByteArray>

namespace lumo {

using mendo::TextPlace;

/// Where the content begins, past a byte-order mark and space.
[[nodiscard]] TextPlace contentPlace(const QByteArray& json);

/// Where an element of the outermost array of a JSON text begins; nowhere when there is none at that
/// position. The text parses.
[[nodiscard]] TextPlace elementPlace(const QByteArray& json, int position);

}  // namespace lumo
