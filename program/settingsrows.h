#pragma once

#include "program/statement.h"

namespace prog {

// The fields of the records of the settings files, in the way of those of statements.

[[nodiscard]] const FieldRows& parameterFields();
[[nodiscard]] const FieldRows& portFields();
[[nodiscard]] const FieldRows& stationFields();

/// How long a station's input may have to hold its level, in ms.
[[nodiscard]] EntryRange holdTimeRange();

/// Whether a station's word for an edge is one of the package's, in any of its languages.
[[nodiscard]] bool isEdgeWord(const QString& word);

}  // namespace prog
