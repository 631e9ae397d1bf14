#pragma once

#include <QString>

namespace app {

/// What the host's file service reports.
struct FileProblem {
    QString file;    ///< as it was given
    int line = 0;    ///< from 1; 0 where it means nothing
    int column = 0;  ///< from 1
    QString reason;  ///< plain English

    bool operator==(const FileProblem& other) const;
};

/// The problem in the panel's language, in one line; `shownFile` stands for the file's path.
QString problemText(const FileProblem& problem, const QString& shownFile);

/// A reason in the panel's language; one that the panel does not know stays as it is.
QString localReason(const QString& reason);

}  // namespace app
