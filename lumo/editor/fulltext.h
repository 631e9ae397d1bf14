#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace lumo {

/// A line of text as it is painted.
struct FullLine {
    QString text;
    bool goesOn = false;  ///< belongs to the line above it, and is indented
};

/// The width of a text in px.
using WidthOfText = std::function<int(const QString& text)>;

/// The full text of a statement (see statementDetails()), one entry a line, in lines of at most `width` px;
/// those that go on have `indent` px less. It is broken at blanks, behind colons and before groups in
/// brackets; within a group only where the group alone is too wide, and then behind its commas; never within
/// a number. A word that is too wide for a line has one of its own.
[[nodiscard]] QVector<FullLine> fullLines(const QString& details, int width, int indent,
                                          const WidthOfText& widthOf);

}  // namespace lumo
