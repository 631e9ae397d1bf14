#pragma once

#include "runner/stationwatch.h"

#include <QString>
#include <QVariantMap>

#include <cstdio>
#include <vector>

namespace run {

/// Totals of a run.
struct Figures {
    QString reason;
    QString waiting;  ///< what an unfinished run was waiting for, else empty
    int lines = 0;
    double pathM = 0;
    qint64 laserMs = 0;
    double weldM = 0;
    qint64 gasMs = 0;
    qint64 wireMs = 0;
    qint64 durationMs = 0;
};

/// Text for what the executor waits for, as its property `waiting` tells it; empty when it does not wait.
QString waitingText(const QVariantMap& waiting);

/// A row of the stations' table.
struct StationLine {
    QString name;
    QString project;
    StationFigures figures;
};

/// Prints a run: a line for each statement (or each state of a station) and each message, tables at the end.
class Report {
public:
    enum class Progress { Statements, Stations };
    /// `out` null: prints nothing. `progress`: what the lines are about.
    explicit Report(std::FILE* out, Progress progress = Progress::Statements)
        : out_(out), progress_(progress) {}

    /// `line` from 0.
    void statement(int line, const QString& type, qint64 atMs);
    /// The state of a station changed.
    void station(const QString& name, const QString& state, qint64 atMs);
    /// A message box.
    void message(const QString& icon, const QString& title, const QString& text, qint64 atMs);
    void table(const Figures& figures);
    /// What each station did.
    void stations(const std::vector<StationLine>& lines);

private:
    void head();

    std::FILE* out_;
    Progress progress_;
    bool headed_ = false;
};

}  // namespace run
