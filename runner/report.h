#pragma once

#include <QString>

#include <cstdio>

namespace run {

/// The figures of a run.
struct Figures {
    QString reason;
    QString waiting;  ///< what a run that did not come to its end was waiting for, else empty
    int lines = 0;
    double pathM = 0;
    qint64 laserMs = 0;
    double weldM = 0;
    qint64 gasMs = 0;
    qint64 wireMs = 0;
    qint64 durationMs = 0;
};

/// What a run prints for a person: a line for each statement and message, and a table at the end.
class Report {
public:
    /// `out` null: prints nothing.
    explicit Report(std::FILE* out) : out_(out) {}

    /// `line` from 0.
    void statement(int line, const QString& type, qint64 atMs);
    /// A message box.
    void message(const QString& icon, const QString& title, const QString& text, qint64 atMs);
    void table(const Figures& figures);

private:
    void head();

    std::FILE* out_;
    bool headed_ = false;
};

}  // namespace run
