#pragma once

#include <QString>

namespace run {

/// What is wrong with an input, and where.
struct Problem {
    QString file;    ///< as the caller named it; empty when no file is concerned
    int line = 0;    ///< from 1; 0 where it means nothing
    int column = 0;  ///< from 1, in characters
    QString reason;  ///< plain English, no full stop

    /// "FILE:LINE:COLUMN: REASON" with the parts that are known; always one line.
    QString text() const;
};

/// One line on standard error: "lumo-run: TEXT".
void printError(const QString& text);
/// One line on standard error: "lumo-run: warning: TEXT".
void printWarning(const QString& text);

}  // namespace run
