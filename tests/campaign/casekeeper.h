#pragma once

#include "campaign/supervisor.h"

#include <QTemporaryDir>

namespace campaign {

/// Shrinks findings and keeps them as case folders.
class CaseKeeper {
public:
    /// `folder` gets a folder for each case; `limitMs` as for ChildProcess.
    CaseKeeper(const QString& folder, int limitMs);

    /// Keeps the shortest schedule that fails like this one; what became of it, in words.
    QString keep(const Finding& finding);

private:
    /// What the schedule breaks in a process for all trials, or in one of its own; empty: nothing.
    [[nodiscard]] QStringList tried(const QJsonObject& scenario);
    [[nodiscard]] QStringList triedAlone(const QJsonObject& scenario) const;
    [[nodiscard]] QStringList eventsOf(const QString& caseFolder) const;

    QString folder_;
    int limitMs_;
    QTemporaryDir scratch_;
    ChildProcess trials_;
};

/// What two violations of one invariant have in common: the words before the first number.
QString signatureOf(const QStringList& broken);

}  // namespace campaign
