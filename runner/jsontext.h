#pragma once

#include "runner/problem.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonValue>
#include <QString>

#include <optional>
#include <vector>

namespace run {

/// A JSON file that holds an array, with what a parsed value no longer tells: where its elements and
/// their entries stand in the text, and the order of their keys.
class JsonText {
public:
    /// Reads and parses a file. Nothing, with the reason in `problem`, when it cannot be read, is no
    /// JSON or holds no array. `shown` is the name used in problems.
    static std::optional<JsonText> read(const QString& file, const QString& shown, Problem* problem);
    /// The same for a text (UTF-8, a byte-order mark allowed).
    static std::optional<JsonText> parse(const QByteArray& text, const QString& shown, Problem* problem);

    const QJsonArray& array() const { return array_; }

    /// A problem at an element of the array.
    Problem problemAt(int element, const QString& reason) const;
    /// A problem at the value of a dotted path in an element ("point.trans"); where that is not
    /// there, at the last part of the path that is.
    Problem problemAt(int element, const QString& path, const QString& reason) const;

    /// An element as it stands in the file, its keys in their order, without white space; numbers in
    /// shortest form.
    QByteArray compact(int element) const;

private:
    /// A place in the text; lines and columns count from 1, columns in characters.
    struct Place {
        int offset = 0;
        int line = 1;
        int column = 1;
    };
    Place placeFrom(const Place& before, int offset) const;
    Problem problemAtOffset(int offset, const QString& reason) const;
    int skipSpace(int pos) const;
    int skipString(int pos) const;
    int skipValue(int pos) const;
    std::optional<int> findEntry(int object, const QString& key) const;

    QString file_;
    QByteArray text_;
    QJsonArray array_;
    std::vector<Place> elements_;  ///< where each element begins
};

}  // namespace run
