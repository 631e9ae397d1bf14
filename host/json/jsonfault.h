#pragma once

#include "json/fileproblem.h"

#include <QByteArray>

#include <optional>

namespace mendo {

/// Where a text stops being JSON.
struct JsonFault {
    int offset;  ///< in bytes
    FileProblem::Kind kind;
};

/// Of the text from an offset on: the offsets of Qt's parser are off by one or more. Nothing where the text
/// is JSON by its grammar; numbers, escapes and UTF-8 are not judged.
[[nodiscard]] std::optional<JsonFault> findFault(const QByteArray& text, int from);

}  // namespace mendo
