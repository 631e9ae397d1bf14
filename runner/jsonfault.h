#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace run {

/// Where a text stops being JSON.
struct JsonFault {
    int offset = 0;
    QString expected;  ///< what should stand there
};

/// Finds the first fault of a text that Qt's parser refused, whose own offsets are off by one or
/// more. Nothing when only the parser knows (text that is no UTF-8, numbers out of range).
std::optional<JsonFault> findJsonFault(const QByteArray& text);

}  // namespace run
