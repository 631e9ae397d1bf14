#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

#include <optional>

namespace mendo {

/// A place in a text: line and column in characters (not bytes, not UTF-16 units), from 1; zeros for
/// nowhere.
struct TextPlace {
    int line = 0;
    int column = 0;
};

/// How many characters `bytes` of UTF-8 text have.
[[nodiscard]] int characterCount(const char* text, int bytes);

/// The place of a byte of a UTF-8 text. A byte-order mark at its beginning is no character.
[[nodiscard]] TextPlace placeOf(const QByteArray& text, int offset);

/// Why a text holds no JSON.
struct JsonFault {
    int offset = 0;  ///< of the byte at which it stops being JSON
    QString reason;  ///< plain English: "no JSON: expected a colon"
};

/// The array or object that a text holds, a byte-order mark before it allowed; nothing, with the first
/// fault, for anything else.
[[nodiscard]] std::optional<QJsonDocument> parseJson(const QByteArray& text, JsonFault* fault);

}  // namespace mendo
